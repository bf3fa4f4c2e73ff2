#include "base/short_text.h"

#include <gtest/gtest.h>

namespace customsconv {
namespace {

const std::string kFull(255, 'x');

TEST(ShortText, CutsSilentlyAt255Bytes) {
  const std::tuple<const char*, ShortText, std::string> cases[] = {
      {"fits", kFull, kFull},
      {"one too many", kFull + "y", kFull},
      {"one appended", ShortText(kFull) += 'y', kFull},
      {"cut within what is appended", ShortText(std::string(250, 'x')) += "xxxxxyyy", kFull},
      {"bytes above 127 and zero", std::string_view("\xFF\0\x80", 3), {"\xFF\0\x80", 3}},
      {"nothing", "", ""}};
  for (const auto& [what, text, expected] : cases) EXPECT_EQ(text.str(), expected) << what;
}

TEST(ShortText, AppendsAndAssignsItsOwnText) {
  ShortText text = "ab";
  text += text;
  EXPECT_EQ(text, "abab");
  text = text.view().substr(1, 2);
  EXPECT_EQ(text, "ba");
  ShortText full(std::string(200, 'x'));
  full += full;
  EXPECT_EQ(full.str(), kFull);
}

TEST(ShortText, ComparesByBytes) {
  EXPECT_LT(ShortText("B"), ShortText("a"));
  EXPECT_LT(ShortText("z"), ShortText("\xE0"));  // bytes are unsigned
  EXPECT_LT(ShortText("a"), ShortText("aa"));
  EXPECT_NE(ShortText(std::string_view("a\0", 2)), ShortText("a"));
  EXPECT_EQ(CutToShort(kFull + "y"), kFull);
  static_assert(sizeof(ShortText) == 256);
}

}  // namespace
}  // namespace customsconv
