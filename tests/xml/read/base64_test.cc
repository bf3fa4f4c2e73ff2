#include "xml/read/base64.h"

#include <gtest/gtest.h>

namespace customsconv {
namespace {

TEST(Base64DecodeInPlace, DecodesInPlaceAndRefusesMisplacedPadding) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"", "", true},
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
  for (const auto& [encoded, bytes, well_formed] : cases) {
    std::string text = encoded;
    EXPECT_EQ(Base64DecodeInPlace(text), well_formed) << encoded;
    EXPECT_EQ(text, bytes) << encoded;
  }
}

}  // namespace
}  // namespace customsconv
