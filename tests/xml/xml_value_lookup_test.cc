#include "xml/xml_value_lookup.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

TEST(GetXmlValue, FindsAValueByItsPath) {
  const struct {
    const char* what;
    const char* text;
    const char* path;
    const char* value;
  } cases[] = {
      {"below its parent", "<r><Code>1</Code><N><Code>2</Code></N></r>", "N\\Code", "2"},
      {"with a prefix", "<N><ns:Code>2</ns:Code></N>", "N\\Code", "2"},
      {"letter case does not matter", "<n><cODE>ab</Code></N>", "N\\Code", "AB"},
      {"blanks around the parts", "<N><Code>2</Code></N>", " N \\ Code ", "2"},
      {"the value is upper-cased", "<r><Code>abвг</Code></r>", "Code", "ABВГ"},
      {"three parts", "<A><B><C>1</C></B></A>", "A\\B\\C", "1"},
      {"the first parent that has it", "<N><x/></N><N><Code>2</Code></N>", "N\\Code", "2"},
      {"a parent with a namespace", "<N xmlns='u'><Code>2</Code></N>", "N\\Code", "2"},
      {"a parent with another attribute", "<N a='u'><Code>2</Code></N>", "N\\Code", ""},
      {"a longer name in front ends the search", "<Nx><Code>1</Code></Nx><N><Code>2</Code></N>",
       "N\\Code", ""},
      {"a parent with a prefix", "<a:N><Code>2</Code></a:N>", "N\\Code", ""},
      {"a parent without end", "<N><Code>2</Code>", "N\\Code", "2"},
      {"named as its parent", "<N><C>1</C><N>2</N></N>", "N\\N", "2"},
      {"the text is the element itself", "<N>1</N><N>2</N>", "N", "2"},
      {"up to the next end tag", "<r><Code>1<x>2</x></Code></r>", "Code", "1<X>2"},
      {"no end tag", "<r><Code>1", "Code", ""},
      {"a date", "<r><D>2015-06-11</D></r>", "D", "11.06.2015"},
      {"with other separators", "<r><D>2015/06.11</D></r>", "D", "11.06.2015"},
      {"a leading separator", "<r><D>1</D></r>", "\\D", "1"},
      {"an empty last part", "<N><D>1</D></N>", "N\\", ""},
      {"an empty path", "<N></N>", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(Utf8(GetXmlValue(Win(c.text), c.path)), c.value);
  }
}

TEST(GetXmlValue, DecodesOnceMoreWhereTheTextNamesUtf8) {
  const std::string declaration = "<?xml encoding='utf-8'?>";
  EXPECT_EQ(Utf8(GetXmlValue(declaration + "<N><D>1</D></N>", "N\\D")), "1");
  EXPECT_EQ(Utf8(GetXmlValue(declaration + "<N><D>\xD0\x90</D></N>", "N\\D")), "А");
  EXPECT_EQ(Utf8(GetXmlValue(declaration + Win("<N><D>АБ</D></N>"), "N\\D")), "");
}

}  // namespace
}  // namespace customsconv
