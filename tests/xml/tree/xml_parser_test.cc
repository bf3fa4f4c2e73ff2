#include "xml/tree/xml_parser.h"

#include <gtest/gtest.h>

#include "support/text.h"

namespace customsconv {
namespace {

// On one line: name(attribute="value"){children}, "text", [CDATA] and !comment!.
std::string Dump(const TXMLNode& node) {
  const std::string value(node.value);
  if (node.type == NodeType::kText) return '"' + value + '"';
  if (node.type == NodeType::kCData) return '[' + value + ']';
  if (node.type == NodeType::kComment) return '!' + value + '!';
  std::string text(node.name);
  for (const TXMLNode& attribute : node.attributes) {
    EXPECT_EQ(attribute.parent, &node);
    text += '(' + std::string(attribute.name) + "=\"" + std::string(attribute.value) + "\")";
  }
  if (node.children.empty()) return text;
  for (const TXMLNode& child : node.children) {
    EXPECT_EQ(child.parent, &node);
    text += (&child == &*node.children.begin() ? '{' : ' ') + Dump(child);
  }
  return text + '}';
}

std::string DumpOf(const std::string& text) { return Dump(XmlTree(text).root()); }

TEST(XmlTree, ReadsElementsAttributesAndContent) {
  // Of entities the parser itself decodes some, the rest is left to DecodeXmlEntities.
  for (const auto& [text, expected] :
       Cases({" -> ", "<a></a> -> a", "<a> x </a> -> a{\" x \"}",
              "<a>\n <b/>\n <c> </c>tail\n</a> -> a{b c \"tail\n\"}",
              "<n:a x='1' y =\"q'q\"\n/> -> n:a(x=\"1\")(y=\"q'q\")",
              "<a><![CDATA[<b>&amp;]]></a> -> a{[<b>&amp;]}",
              "<a><!-- b --> \n c</a> -> a{! b ! \"c\"}", "<!-- one --><!--two-->\n<a/> -> a",
              "<a><?b c='d'?><e/></a> -> a{e}", "\xEF\xBB\xBF<a/> -> a", "   <a/> -> a",
              "<$%*-.0:@A_z\xC0\xFF/> -> $%*-.0:@A_z\xC0\xFF",
              "<a>1 &amp;lt; 2</a> -> a{\"1 &lt; 2\"}",
              "<a>&lt;&amp;&quot;&gt;&#65;&</a> -> a{\"<&&quot;&gt;&#65;&\"}",
              "<a b='x&quot;y&amp;quot;&lt;'/> -> a(b=\"x\"y&quot;&lt;\")"})) {
    EXPECT_EQ(DumpOf(text), expected) << text;
  }
}

TEST(XmlTree, ForgivesWhatFilesOfTheFieldGetWrong) {
  // Where no name or value stands, the last one that was read is taken over.
  for (const auto& [text, expected] :
       Cases({"<a><b>x -> a{b{\"x\"}}", "<a/>trailing text -> a", "<a><![CDATA[x] -> a{[x]]}",
              "<r><a>x</ab>y</r> -> r{a{\"x\"} \">y\"}", "<a>x</a -> a{\"x\"}",
              "<a ! b='c' ? \"q\" d='e'>x</a> -> a(b=\"c\")(d=\"e\"){\"x\"}",
              "<r><a / b='c'>x</r> -> r{a(b=\"c\") \"x\"}", "<a b=/>x</a> -> a(b=\"b\"){\"x\"}",
              "<a ' b '='c'/> -> a(b=\"c\")", "<a ='c'/> -> a(a=\"c\")", "<a>< ></a></a> -> a{a}",
              "<a><!ELEMENT b>c</a> -> a{a \"ELEMENT b>c\"}",
              "<?xml version='1.1'?><!DOCTYPE a><a/> -> 1.1"})) {
    EXPECT_EQ(DumpOf(text), expected) << text;
  }
}

TEST(XmlTree, RefusesWithTheParsersMessages) {
  const std::string start = "<root>" + std::string(200, '.'), dots(300, '.');
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"Unterminated attribute", {"<a b=\"c>"}},
      {"= expected:<a b c='d'>", {"<a b c='d'>"}},
      {"= expected:<a><", {"<a><"}},
      {"= expected:<a &>", {"<a &>"}},
      {"= expected:" + dots.substr(0, 47) + "<a b>" + dots.substr(0, 48), {start + "<a b>" + dots}},
      {"Attribute value expected", {"<a b=c>", "<a b= 'c'>", "<?xml version=1.0?><a/>"}},
      {"> expected", {"<a b='c'", "<a/"}},
      {"Tag order error. Tag: \"b\" code: <a><b></a>", {"<a><b></a>"}},
      {"Tag order error. Tag: \"a\" code: <a></A>", {"<a></A>"}},
      {"Tag order error. Tag: \"root\" code: " + dots.substr(0, 101) + "</b>" + dots.substr(0, 95),
       {start + "</b>" + dots}},
      {"Tag name expected: </a>", {"</a>"}},
      {"Tag name expected: " + dots.substr(0, 17) + "<'a'>x", {start + "<'a'>x"}},
      {"Не найден конец комментария", {"<!-->"}},
      {"Unclosed XML header", {"<?xml version='1.0'><a/>"}},
      {"= expected", {"<?xml version?><a/>", "<?xml version '?>'"}},
      {"< expected", {" <a/>", "<?xml version='1.0'?> a", "<!-- only a comment -->"}},
      {"Attribute/Node name cannot be empty", {"<a ' '='c'/>"}}};
  for (const auto& [message, texts] : cases) {
    for (const std::string& text : texts) {
      EXPECT_EQ(Utf8(ErrorOf([&] { XmlTree tree(text); })), message) << text;
    }
  }
}

TEST(XmlTree, KeepsDeclarationsInFrontOfTheRoot) {
  const XmlTree tree("<?xml version= \"1.0\" encoding = 'UTF-8' ?> <?b?><r><?c?><d/></r>");
  ASSERT_EQ(tree.header().Count(), 2u);
  EXPECT_EQ(Dump(tree.header().Item(0)), "xml(version=\"1.0\")(encoding=\"UTF-8\")");
  EXPECT_EQ(Dump(tree.header().Item(1)), "b");
}

TEST(TXMLNode, FindsNamesWithAndWithoutPrefix) {
  const XmlTree tree("<r n:x='2'><goods/><ns:Goods>p</ns:Goods><Goods>q</Goods></r>");
  const TXMLNodeList& children = tree.root().children;
  EXPECT_EQ(children.Find("Goods"), &children.Item(1));
  EXPECT_EQ(children.Find("ns:Goods"), &children.Item(1));
  EXPECT_EQ(children.Find("GOODS"), nullptr);
  EXPECT_EQ(tree.root().Attribute("x"), "2");
  EXPECT_EQ(tree.root().Attribute("y"), "");
  EXPECT_EQ(XmlTree("<a><b/><!--no--><![CDATA[yes]]>later</a>").root().Text(), "yes");
}

TEST(DecodeXmlEntities, DecodesNamesThenDecimalReferences) {
  std::string buffer;
  for (const auto& [text, expected] :
       Cases({"&apos;&gt;&lt;&quot;&amp; -> '><\"&", "&amp;lt;&amp;amp; -> &lt;&amp;",
              "&Amp;&nbsp;& & -> &Amp;&nbsp;& &",
              "&#65;&#192;&#255;&#256;&#1040;&#99999999999999999999; -> A\xC0\xFF???",
              "&#0;&#;&#x41;&#-5;&# 65;&#66; -> &#0;&#;&#x41;&#-5;&# 65;B", "&#65;&#65 -> A&#65",
              "&#6&#65;&#66; -> &#6&#65;B", "&amp;#65;&#38;#38;#38;#65;& -> AA&",
              "&&#35;65; -> &#65;"})) {
    EXPECT_EQ(DecodeXmlEntities(text, buffer), expected) << text;
  }
}

}  // namespace
}  // namespace customsconv
