#include "entry/registration_number.h"

#include <gtest/gtest.h>

#include "support/environment_builder.h"
#include "support/table_image.h"

namespace customsconv {
namespace {

constexpr const char* kXml =
    "<R><GTDNumber><a:CustomsCode>\r\n10702020\r\n</a:CustomsCode><a:RegistrationDate>\r\n"
    "2015-06-11\r\n</a:RegistrationDate><GTDNumber>\t0001234\n</GTDNumber></GTDNumber></R>";
constexpr const char* kNumber = "10702020/110615/0001234";
// What the numbering gives first, on the fake clock's day.
constexpr const char* kFresh = "00000000/170326/0000002";

class RegistrationNumberTest : public testing::Test {
 protected:
  RegistrationNumberTest() { world.host.clock.Set({2026, 3, 17}); }

  std::string Number(const std::string& base_name, std::string_view text = "<R/>") {
    return Utf8(
        RegistrationNumberOf(Win("C:\\IN\\" + base_name + ".xml"), text, tables, world.environment)
            .text);
  }

  TestEnvironment world;
  TDbfCache tables{world.host};
};

TEST_F(RegistrationNumberTest, ComesFromTheFileNameElseFromTheText) {
  for (const char* name : {"DT_10702020201506110001234", "10702020_110615_0001234",
                           "Копия 10702020_110615_0001234", "X_10702020_110615_0001234"}) {
    EXPECT_EQ(Number(name), kNumber) << name;
  }
  // Runs of "_" separate words once, but every "_" of the number becomes "/".
  EXPECT_EQ(Number("__10702020_110615__0001234"), kFresh);
  EXPECT_EQ(Number("10702020_110615_1234"), "00000000/170326/0000003") << "incomplete";
  EXPECT_EQ(Number("DT_1070202020150611000123"), "00000000/170326/0000004");
  EXPECT_EQ(Number("decl", kXml), kNumber);
  EXPECT_EQ(Number("a_b_c_d_e", kXml), kNumber);
}

TEST_F(RegistrationNumberTest, ComesFromTheRegisterBesideTheFile) {
  world.host.files["C:\\IN\\G07ESAD.DBF"] = TableImage("FLDNAME C20, G071 C8, G072 D8, G073 C7")
                                                .Row({"other", "1", "20150611", "2"})
                                                .Row({"DECL", "10702020", "20150611", "0001234"})
                                                .Row({"half", "10702020", "", "0001234"})
                                                .Bytes();
  EXPECT_EQ(Number("decl"), kNumber);
  EXPECT_EQ(Number("half"), kFresh);
  world.host.files.has_short_names = false;
  EXPECT_EQ(Number("decl"), kNumber);
}

}  // namespace
}  // namespace customsconv
