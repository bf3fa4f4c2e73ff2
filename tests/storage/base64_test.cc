#include "storage/base64.h"

#include <gtest/gtest.h>

namespace customsconv {
namespace {

TEST(Base64DecodeInPlace, DecodesInPlaceAndRefusesMisplacedPadding) {
  const struct {
    const char *text, *bytes;
    bool well_formed;
  } cases[] = {{"", "", true},
               {"TWFu\r\nTWE=", "ManMa", true},
               {"T\tW F-u", "Man", true},
               {"TQ= \r\n=TWFu", "MMan", true},  // the text goes on behind a padded group
               {"+/+/", "\xFB\xFF\xBF", true},
               {"TWFuTWE", "Man", true},  // an unfinished last group gives nothing
               {"=", "=", false},
               {"TWFu=TWFu", "Man=TWFu", false},
               {"T=", "=", false},
               {"TWFuTQ=", "Man", false},
               {"TWFuTQ=T", "ManT", false},
               {"TWE==", "Ma=", false}};
  for (const auto& c : cases) {
    std::string text = c.text;
    EXPECT_EQ(Base64DecodeInPlace(text), c.well_formed) << c.text;
    EXPECT_EQ(text, c.bytes) << c.text;
  }
}

}  // namespace
}  // namespace customsconv
