#include "xml/read/xml_value_lookup.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

TEST(GetXmlValue, FindsAValueByItsPath) {
  const struct {
    const char *text, *path, *value;
  } cases[] = {{"<r><Code>1</Code><N><Code>2</Code></N></r>", "N\\Code", "2"},
               {"<N><ns:Code>2</ns:Code></N>", " N \\ Code ", "2"},
               {"<n><cODE>abвг</Code></N>", "N\\Code", "ABВГ"},
               {"<A><B><C>1</C></B></A>", "A\\B\\C", "1"},
               {"<N><x/></N><N><Code>2</Code></N>", "N\\Code", "2"},
               {"<N xmlns='u'><Code>2</Code></N>", "N\\Code", "2"},
               {"<N a='u'><Code>2</Code></N>", "N\\Code", ""},
               {"<Nx><Code>1</Code></Nx><N><Code>2</Code></N>", "N\\Code", ""},
               {"<a:N><Code>2</Code></a:N>", "N\\Code", ""},
               {"<N><Code>2</Code>", "N\\Code", "2"},
               {"<N><C>1</C><N>2</N></N>", "N\\N", "2"},
               {"<N>1</N><N>2</N>", "N", "2"},
               {"<r><Code>1<x>2</x></Code></r>", "Code", "1<X>2"},
               {"<r><Code>1", "Code", ""},
               {"<r><D>2015/06.11</D></r>", "D", "11.06.2015"},
               {"<r><D>\r\n 2015-06-11\r\n</D></r>", "D", "11.06.2015"},
               {"<r><D>1</D></r>", "\\D", "1"},
               {"<N><D>1</D></N>", "N\\", ""},
               {"<N></N>", "", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(Utf8(GetXmlValue(Win(c.text), c.path)), c.value) << c.text;
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
