#include "storage/base64.h"

#include <gtest/gtest.h>

#include <string_view>

namespace customsconv {
namespace {

using std::string_view_literals::operator""sv;

TEST(Base64DecodeInPlace, DecodesWhatIsWellFormed) {
  const struct {
    std::string_view text;
    std::string_view bytes;
  } cases[] = {
      {"", ""},
      {"TWFu", "Man"},
      {"TWE=", "Ma"},
      {"TQ==", "M"},
      {"TWFu\r\nTWE=", "ManMa"},
      {"T\tW F-u", "Man"},
      {"TQ= \r\n=TWFu", "MMan"},  // a group goes on behind blanks, the text behind a padded group
      {"+/+/AAAA", "\xFB\xFF\xBF\0\0\0"sv},
      {"TWFuT", "Man"},  // an unfinished last group gives nothing
      {"TWFuTWE", "Man"},
      {" .-\xFF", ""},
  };
  for (const auto& c : cases) {
    std::string text(c.text);
    EXPECT_TRUE(Base64DecodeInPlace(text)) << c.text;
    EXPECT_EQ(text, c.bytes) << c.text;
  }
}

TEST(Base64DecodeInPlace, RefusesMisplacedPadding) {
  const struct {
    std::string_view text;
    std::string_view left;
  } cases[] = {{"=", "="},         {"TWFu=TWFu", "Man=TWFu"}, {"T=", "="},
               {"TWFuTQ=", "Man"}, {"TWFuTQ=T", "ManT"},      {"TWE==", "Ma="}};
  for (const auto& c : cases) {
    std::string text(c.text);
    EXPECT_FALSE(Base64DecodeInPlace(text)) << c.text;
    EXPECT_EQ(text, c.left) << c.text;
  }
}

}  // namespace
}  // namespace customsconv
