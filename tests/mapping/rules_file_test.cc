#include "mapping/rules_file.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "mapping/mapping_line.h"
#include "support/catalogue_builder.h"

namespace customsconv {
namespace {

TEST(RulesFile, LinesEndAtCrLfCrOrLf) {
  const RulesFile rules("a\r\nb\rc\n\nd");
  ASSERT_EQ(rules.Count(), 5);
  EXPECT_EQ(rules.Line(2), "c");
  EXPECT_EQ(rules.Line(3), "");
  EXPECT_EQ(rules.Line(4), "d");
  EXPECT_EQ(ErrorOf([&] { (void)rules.ShortLine(5); }), "List index out of bounds (5)");
}

TEST(RulesFile, FindsTheFirstSectionWhoseKindsLineHoldsTheKind) {
  const RulesFile rules(
      LinesOf("[SUB], Block{, [SBRHEAD], =DTSout_CU, [DBRHEAD x], =esadout,KTDout, [OTHER], "
              "=ESADout, [LAST]"));
  const std::pair<const char*, int> cases[] = {
      {"ESADout", 4}, {"DTSout", 2}, {"KTDout", 4}, {"Inventory", -1}, {"Block", -1}};
  for (const auto& [kind, line] : cases) {
    EXPECT_EQ(rules.FindSection(kind).value_or(-1), line) << kind;
  }
  EXPECT_EQ(rules.TableName(4), "DBRHEAD");
  EXPECT_EQ(rules.NextHeader(4), 6);
  EXPECT_EQ(rules.NextHeader(8), rules.Count());
}

TEST(MappingLines, SplitAtBlanksExclamationMarksAndEqualSigns) {
  const RulesFile rules(
      "[T]\nBlock{\nG33=Code\nG34 Name rest\n!G35!! = Sum\nG36\n;G37=Skipped\n\n   \n" +
      std::string(250, ' ') + "G38 = Cut\n[NEXT]\nG39=No");
  std::string seen;
  for (const MappingLine& line : MappingLinesOf(rules, 0)) {
    seen += std::to_string(line.index) + ":" + std::string(line.field) + "<" +
            std::string(line.expression) + " ";
  }
  // The last line is cut at 255 bytes, which leaves "G38 =".
  EXPECT_EQ(seen, "2:G33<Code 3:G34<Name 4:G35<Sum 5:G36< 9:G38< ");
}

}  // namespace
}  // namespace customsconv
