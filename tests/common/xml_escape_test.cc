#include "common/xml_escape.h"

#include <gtest/gtest.h>

namespace customsconv {
namespace {

TEST(XmlEscape, KeepsQuotesAndCarriageReturns) {
  const std::string_view text = "a<b & \"c\">'\t\r\n\x01\xC0";
  const std::string_view escaped = "a&lt;b &amp; \"c\"&gt;' \r  \xC0";
  EXPECT_EQ(XmlEscape(text), escaped);
  EXPECT_EQ(XmlEscapeShort(text), escaped);
  EXPECT_EQ(XmlEscapeShort(std::string(254, 'x') + "<"), std::string(254, 'x') + "&");
}

TEST(XmlEscape, RecognisesIdentifiers) {
  const std::string guid = "0F8fAD5b-d9cb-469f-a165-70867728950e";
  EXPECT_TRUE(IsGuid(guid));
  EXPECT_TRUE(IsGuid("{{" + guid + "}}"));
  EXPECT_FALSE(IsGuid("0F8fAD5bd-9cb-469f-a165-70867728950e"));
  EXPECT_FALSE(IsGuid("0F8fAD5b-d9cb-469f-a165-70867728950g"));
}

}  // namespace
}  // namespace customsconv
