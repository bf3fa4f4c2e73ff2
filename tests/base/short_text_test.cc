#include "base/short_text.h"

#include <gtest/gtest.h>

namespace customsconv {
namespace {

const std::string kFull(255, 'x');

TEST(ShortText, CutsAt255BytesWhereItSays) {
  static_assert(!std::is_convertible_v<std::string_view, ShortText>);
  static_assert(!std::is_convertible_v<const char(&)[257], ShortText>);
  const std::tuple<const char*, ShortText, std::string> cases[] = {
      {"fits", ShortText::Cut(kFull), kFull},
      {"one too many", ShortText::Cut(kFull + "y"), kFull},
      {"one appended", ShortText::Cut(kFull) += 'y', kFull},
      {"cut within what is appended", ShortText::Cut(std::string(250, 'x')) += "xxxxxyyy", kFull},
      {"bytes above 127 and zero", "\xFF\0\x80", {"\xFF\0\x80", 3}},
      {"nothing", "", ""}};
  for (const auto& [what, text, expected] : cases) EXPECT_EQ(text.str(), expected) << what;
}

TEST(ShortText, AppendsAndAssignsItsOwnText) {
  ShortText text = "ab";
  text += text;
  EXPECT_EQ(text, "abab");
  text = ShortText::Cut(text.view().substr(1, 2));
  EXPECT_EQ(text, "ba");
  ShortText full = ShortText::Cut(std::string(200, 'x'));
  full += full;
  EXPECT_EQ(full.str(), kFull);
}

TEST(ShortText, ComparesByBytes) {
  EXPECT_LT(ShortText("B"), ShortText("a"));
  EXPECT_LT(ShortText("z"), ShortText("\xE0"));  // bytes are unsigned
  EXPECT_LT(ShortText("a"), ShortText("aa"));
  EXPECT_NE(ShortText("a\0"), ShortText("a"));
  EXPECT_EQ(CutToShort(kFull + "y"), kFull);
  static_assert(sizeof(ShortText) == 256);
}

}  // namespace
}  // namespace customsconv
