#include "xml/xml_parser.h"

#include <gtest/gtest.h>

#include <string>

#include "support/text.h"

namespace customsconv {
namespace {

struct Case {
  std::string text;
  std::string expected;
};

// A tree on one line: elements as name(attribute="value"){children}, text in quotes,
// CDATA in "[]", comments in "!!".
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
  const Case cases[] = {
      {"", ""},
      {"<a/>", "a"},
      {"<a></a>", "a"},
      {"<a> x </a>", "a{\" x \"}"},
      {"<a>\n <b/>\n <c> </c>tail\n</a>", "a{b c \"tail\n\"}"},
      {"<n:a x='1' y =\"q'q\"\n/>", "n:a(x=\"1\")(y=\"q'q\")"},
      {"<a><![CDATA[<b>&amp;]]></a>", "a{[<b>&amp;]}"},
      {"<a><!-- b --> \n c</a>", "a{! b ! \"c\"}"},
      {"<!-- one --><!--two-->\n<a/>", "a"},
      {"<a><?b c='d'?><e/></a>", "a{e}"},
      {"\xEF\xBB\xBF<a/>", "a"},
      {"   <a/>", "a"},  // any three bytes pass for a byte order mark
      {"<$%*-.0:@A_z\xC0\xFF/>", "$%*-.0:@A_z\xC0\xFF"},
      // What the parser itself decodes; the rest is left to DecodeXmlEntities.
      {"<a>1 &amp;lt; 2</a>", "a{\"1 &lt; 2\"}"},
      {"<a>&lt;&amp;&quot;&gt;&#65;&</a>", "a{\"<&&quot;&gt;&#65;&\"}"},
      {"<a b='x&quot;y&amp;quot;&lt;'/>", "a(b=\"x\"y&quot;&lt;\")"},
  };
  for (const Case& c : cases) EXPECT_EQ(DumpOf(c.text), c.expected) << c.text;
}

TEST(XmlTree, ForgivesWhatFilesOfTheFieldGetWrong) {
  const Case cases[] = {
      {"<a/>trailing text", "a"},
      {"<a><b>x", "a{b{\"x\"}}"},
      {"<a><![CDATA[x]", "a{[x]]}"},
      {"<r><a>x</ab>y</r>", "r{a{\"x\"} \">y\"}"},
      {"<a>x</a", "a{\"x\"}"},
      {"<a ! b='c' ? \"q\" d='e'>x</a>", "a(b=\"c\")(d=\"e\"){\"x\"}"},
      {"<r><a / b='c'>x</r>", "r{a(b=\"c\") \"x\"}"},
      // Where no name or value stands, the last one that was read is taken over.
      {"<a b=>x</a>", "a(b=\"b\"){\"x\"}"},
      {"<a b=/>x</a>", "a(b=\"b\"){\"x\"}"},
      {"<a ' b '='c'/>", "a(b=\"c\")"},
      {"<a ='c'/>", "a(a=\"c\")"},
      {"<a>< ></a></a>", "a{a}"},
      {"<a><!ELEMENT b>c</a>", "a{a \"ELEMENT b>c\"}"},
      {"<?xml version='1.1'?><!DOCTYPE a><a/>", "1.1"},
  };
  for (const Case& c : cases) EXPECT_EQ(DumpOf(c.text), c.expected) << c.text;
}

TEST(XmlTree, RefusesWithTheParsersMessages) {
  const std::string start = "<root>" + std::string(200, '.'), dots(300, '.');
  const Case cases[] = {
      {"<a b=\"c>", "Unterminated attribute"},
      {"<a", "= expected:<a"},
      {"<a b c='d'>", "= expected:<a b c='d'>"},
      {"<a><", "= expected:<a><"},
      {"<a &>", "= expected:<a &>"},
      {start + "<a b>" + dots, "= expected:" + dots.substr(0, 47) + "<a b>" + dots.substr(0, 48)},
      {"<a b=c>", "Attribute value expected"},
      {"<a b= 'c'>", "Attribute value expected"},
      {"<a b='c'", "> expected"},
      {"<a/", "> expected"},
      {"<a><b></a>", "Tag order error. Tag: \"b\" code: <a><b></a>"},
      {"<a></A>", "Tag order error. Tag: \"a\" code: <a></A>"},
      {start + "</b>" + dots,
       "Tag order error. Tag: \"root\" code: " + dots.substr(0, 101) + "</b>" + dots.substr(0, 95)},
      {"<>", "Tag name expected: <>"},
      {"</a>", "Tag name expected: </a>"},
      {start + "<'a'>x", "Tag name expected: " + dots.substr(0, 17) + "<'a'>x"},
      {"<!-->", "Не найден конец комментария"},
      {"<?xml version='1.0'><a/>", "Unclosed XML header"},
      {"<?xml version?><a/>", "= expected"},
      {"<?xml version '?>'", "= expected"},
      {"<?xml version=1.0?><a/>", "Attribute value expected"},
      {" <a/>", "< expected"},
      {"<?xml version='1.0'?> a", "< expected"},
      {"<!-- only a comment -->", "< expected"},
      {"<a ' '='c'/>", "Attribute/Node name cannot be empty"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Utf8(ErrorOf([&] { XmlTree tree(c.text); })), c.expected) << c.text;
  }
}

TEST(XmlTree, KeepsDeclarationsInFrontOfTheRoot) {
  const XmlTree tree("<?xml version= \"1.0\" encoding = 'UTF-8' ?> <?b?><r><?c?><d/></r>");
  ASSERT_EQ(tree.header().Count(), 2u);
  EXPECT_EQ(Dump(tree.header().Item(0)), "xml(version=\"1.0\")(encoding=\"UTF-8\")");
  EXPECT_EQ(Dump(tree.header().Item(1)), "b");
}

TEST(XmlTree, CopiesNoTextThatNeedsNoDecoding) {
  const std::string text = "<a b='x&y'>plain &gt; text</a>";
  const XmlTree tree(text);
  EXPECT_EQ(tree.root().Attribute("b").data(), text.data() + text.find('x'));
  EXPECT_EQ(tree.root().Text().data(), text.data() + text.find('p'));
}

TEST(XmlTree, NestsAsDeepAsTheTextDoes) {
  constexpr std::size_t kDepth = 1000000;
  std::string text;
  for (std::size_t i = 0; i < kDepth; ++i) text += "<a>";
  std::size_t depth = 1;
  const XmlTree tree(text);
  const TXMLNode* node = &tree.root();
  for (; !node->children.empty(); node = &*node->children.begin()) ++depth;
  EXPECT_EQ(depth, kDepth);
}

TEST(TXMLNode, FindsNamesWithAndWithoutPrefix) {
  const XmlTree tree("<r n:x='2'><goods/><ns:Goods>p</ns:Goods><Goods>q</Goods></r>");
  const TXMLNodeList& children = tree.root().children;
  EXPECT_EQ(children.Find("Goods"), &children.Item(1));
  EXPECT_EQ(children.Find("ns:Goods"), &children.Item(1));
  EXPECT_EQ(children.Find("GOODS"), nullptr);
  EXPECT_EQ(tree.root().Attribute("x"), "2");
  EXPECT_EQ(tree.root().Attribute("y"), "");
}

TEST(TXMLNode, TextIsTheFirstTextOrCData) {
  const XmlTree tree("<a><b/><!--no--><![CDATA[yes]]>later</a>");
  EXPECT_EQ(tree.root().Text(), "yes");
  EXPECT_EQ(tree.root().children.Item(1).Text(), "no");
}

TEST(DecodeXmlEntities, DecodesNamesThenDecimalReferences) {
  const Case cases[] = {
      {"&apos;&gt;&lt;&quot;&amp;", "'><\"&"},
      {"&amp;lt;&amp;amp;", "&lt;&amp;"},
      {"&Amp;&nbsp;& &", "&Amp;&nbsp;& &"},
      {"&#65;&#192;&#255;&#256;&#1040;&#99999999999999999999;", "A\xC0\xFF???"},
      {"&#0;&#;&#x41;&#-5;&# 65;&#66;", "&#0;&#;&#x41;&#-5;&# 65;B"},
      {"&#65;&#65", "A&#65"},
      {"&#6&#65;&#66;", "&#6&#65;B"},
      {"&amp;#65;&#38;#38;#38;#65;&", "AA&"},
      {"&&#35;65;", "&#65;"},
  };
  std::string buffer;
  for (const Case& c : cases) EXPECT_EQ(DecodeXmlEntities(c.text, buffer), c.expected) << c.text;
}

}  // namespace
}  // namespace customsconv
