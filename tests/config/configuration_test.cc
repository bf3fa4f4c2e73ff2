#include "config/configuration.h"

#include <gtest/gtest.h>

#include "support/environment_builder.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\PROG\\kord.ini";

TEST(TConfiguration, ReadsFlagsInWords) {
  TestEnvironment world("[S]\nyes=да\nno=2\nempty=\n");
  EXPECT_TRUE(world.config().GetBool("S", "yes", false));
  for (const char* key : {"no", "empty", "none"}) {
    EXPECT_EQ(world.config().GetBool("S", key, true), key != std::string("no")) << key;
  }
}

TEST(TConfiguration, ReadsWordsAndAppendsValues) {
  TestEnvironment world("[S]\nlist=,one; two,,three\n");
  EXPECT_EQ(world.config().GetWord("S", "list", 2), " two");
  world.config().AppendValue("S", "list", "four");
  world.config().AppendValue("S", "new", "one");
  EXPECT_EQ(world.host.files[kFile], "[S]\r\nlist=,one; two,,three,four\r\nnew=,one\r\n");
}

TEST(TConfiguration, KeepsLongValuesInPieces) {
  const std::string a(240, 'a'), b(240, 'b'), c(20, 'c');
  TestEnvironment world("[S]\nk=old\nk(4)=x\nk(5)=y\nk(6)=\nk(7)=z\n");
  TConfiguration& config = world.config();
  EXPECT_EQ(ErrorOf([&] { config.SetLongString("S", "k", a + "b\tb"); }),
            Win("TVeltIni: Недопустимое значение S_k(2)=b\tb"));
  EXPECT_EQ(config.GetLongString("S", "k", ""), "old");
  config.SetLongString("S", "k", a + b + c);
  EXPECT_EQ(world.host.files[kFile],
            "[S]\r\nk(6)=\r\nk(7)=z\r\nk(1)=" + a + "\r\nk(2)=" + b + "\r\nk(3)=" + c + "\r\n");
  EXPECT_EQ(world.host.files.Count(FileOp::kCommit), 1) << "nobody sees half of the pieces";
  EXPECT_EQ(config.GetLongString("S", "k", ""), a + b + c);
  config.SetLongString("S", "k", a);
  EXPECT_EQ(config.ReadSection("S"), (std::vector<std::string>{"k(6)", "k(7)", "k(1)"}));
  config.SetLongString("S", "k", "short");
  EXPECT_EQ(config.ReadSection("S"), (std::vector<std::string>{"k(6)", "k(7)", "k"}));
  EXPECT_EQ(config.GetLongString("S", "k", ""), "short");
}

TEST(SharedConfigurations, HandsOutOneObjectUntilTheFileChanges) {
  TestEnvironment world("[S]\nk=1\n");
  SharedConfigurations shared(world.host);
  TConfiguration& first = shared.Get(kFile, CodePage::kWindows);
  EXPECT_EQ(&shared.Get("c:\\prog\\KORD.INI", CodePage::kWindows), &first);
  world.host.files[kFile] = "[S]\r\nk=2\r\n";
  EXPECT_EQ(shared.Get(kFile, CodePage::kWindows).GetString("S", "k", ""), "2");
  world.host.files.Remove(kFile);
  EXPECT_EQ(ErrorOf([&] { shared.Get(kFile, CodePage::kWindows); }),
            Win("Не могу открыть ini-файл \"C:\\PROG\\kord.ini\""));
}

}  // namespace
}  // namespace customsconv
