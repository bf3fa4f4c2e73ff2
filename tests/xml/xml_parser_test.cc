#include "xml/xml_parser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/text.h"

namespace customsconv {
namespace {

// A tree on one line: elements as name(attribute="value"){children}, text in quotes,
// CDATA in "[]", comments in "!!".
std::string Dump(const TXMLNode& node) {
  const std::string value(node.value);
  if (node.type == NodeType::kText) return '"' + value + '"';
  if (node.type == NodeType::kCData) return '[' + value + ']';
  if (node.type == NodeType::kComment) return '!' + value + '!';
  std::string text(node.name);
  for (const TXMLNode& attribute : node.attributes) {
    EXPECT_EQ(attribute.type, NodeType::kAttribute);
    EXPECT_EQ(attribute.parent, &node);
    text += '(' + std::string(attribute.name) + "=\"" + std::string(attribute.value) + "\")";
  }
  if (node.children.empty()) return text;
  text += '{';
  for (const TXMLNode& child : node.children) {
    EXPECT_EQ(child.parent, &node);
    if (text.back() != '{') text += ' ';
    text += Dump(child);
  }
  return text + '}';
}

std::string DumpOf(const std::string& text) {
  const XmlTree tree(text);
  return Dump(tree.root());
}

std::string ParseError(const std::string& text) {
  return Utf8(ErrorOf([&] { XmlTree tree(text); }));
}

TEST(XmlTree, ReadsElementsAttributesAndContent) {
  const struct {
    const char* text;
    const char* tree;
  } cases[] = {
      {"", ""},
      {"<a/>", "a"},
      {"<a></a>", "a"},
      {"<a> x </a>", "a{\" x \"}"},
      {"<a>   </a>", "a"},
      {"<a>\n <b/>\n <c/>tail\n</a>", "a{b c \"tail\n\"}"},
      {"<n:a x='1' y =\"q'q\"\n/>", "n:a(x=\"1\")(y=\"q'q\")"},
      {"<a><![CDATA[<b>&amp;]]></a>", "a{[<b>&amp;]}"},
      {"<a><!-- b --> \n c</a>", "a{! b ! \"c\"}"},
      {"<!-- one --><!--two-->\n<a/>", "a"},
      {"<?xml version='1.0'?>\r\n<a/>", "a"},
      {"<a><?b c='d'?><e/></a>", "a{e}"},
      {"\xEF\xBB\xBF<a/>", "a"},
      {"   <a/>", "a"},
      {"<a/>trailing text", "a"},
      {"<$%*-.0:@A_z\xC0\xFF/>", "$%*-.0:@A_z\xC0\xFF"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(DumpOf(c.text), c.tree);
  }
}

TEST(XmlTree, ForgivesWhatFilesOfTheFieldGetWrong) {
  const struct {
    const char* what;
    const char* text;
    const char* tree;
  } cases[] = {
      {"left open", "<a><b>x", "a{b{\"x\"}}"},
      {"CDATA without end", "<a><![CDATA[x]", "a{[x]]}"},
      {"end tag longer than the name", "<r><a>x</ab>y</r>", "r{a{\"x\"} \">y\"}"},
      {"end tag cut off", "<a>x</a", "a{\"x\"}"},
      {"strangers between attributes", "<a ! b='c' ? \"q\" d='e'>x</a>",
       "a(b=\"c\")(d=\"e\"){\"x\"}"},
      {"slash before an attribute", "<r><a / b='c'>x</r>", "r{a(b=\"c\") \"x\"}"},
      {"attribute without value", "<a b=>x</a>", "a(b=\"b\"){\"x\"}"},
      {"slash for a value", "<a b=/>x</a>", "a(b=\"b\"){\"x\"}"},
      {"name taken over from a quoted text", "<a ' b '='c'/>", "a(b=\"c\")"},
      {"name taken over from the tag", "<a ='c'/>", "a(a=\"c\")"},
      {"tag name taken over", "<a>< ></a></a>", "a{a}"},
      {"other markup inside", "<a><!ELEMENT b>c</a>", "a{a \"ELEMENT b>c\"}"},
      {"other markup before the root", "<?xml version='1.1'?><!DOCTYPE a><a/>", "1.1"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(DumpOf(c.text), c.tree);
  }
}

TEST(XmlTree, RefusesWithTheParsersMessages) {
  const std::string start = "<root>" + std::string(200, '.');
  const struct {
    std::string text;
    std::string message;
  } cases[] = {
      {"<a b=\"c>", "Unterminated attribute"},
      {"<a", "= expected:<a"},
      {"<a ", "= expected:<a "},
      {"<a b", "= expected:<a b"},
      {"<a b c='d'>", "= expected:<a b c='d'>"},
      {"<a><", "= expected:<a><"},
      {"<a &>", "= expected:<a &>"},
      {start + "<a b>" + std::string(60, '-'),
       "= expected:" + std::string(47, '.') + "<a b>" + std::string(48, '-')},
      {"<a b=c>", "Attribute value expected"},
      {"<a b= 'c'>", "Attribute value expected"},
      {"<a b='c'", "> expected"},
      {"<a/", "> expected"},
      {"<a><b></a>", "Tag order error. Tag: \"b\" code: <a><b></a>"},
      {"<a></", "Tag order error. Tag: \"a\" code: <a></"},
      {"<a></A>", "Tag order error. Tag: \"a\" code: <a></A>"},
      {start + "</b>" + std::string(200, '-'),
       "Tag order error. Tag: \"root\" code: " + std::string(101, '.') + "</b>" +
           std::string(95, '-')},
      {"<>", "Tag name expected: <>"},
      {"</a>", "Tag name expected: </a>"},
      {"<'a'>", "Tag name expected: <'a'>"},
      {"<a>" + std::string(30, '.') + "<>x", "Tag name expected: " + std::string(19, '.') + "<>x"},
      {"<a><!-- b ->", "Не найден конец комментария"},
      {"<!-->", "Не найден конец комментария"},
      {"<?xml version='1.0'><a/>", "Unclosed XML header"},
      {"<?xml version?><a/>", "= expected"},
      {"<?xml version=1.0?><a/>", "Attribute value expected"},
      {"<?xml version='1.0?><a/>", "Unterminated attribute"},
      {"<?xml version '?>'", "= expected"},
      {" <a/>", "< expected"},
      {"x", "< expected"},
      {"<?xml version='1.0'?> a", "< expected"},
      {"<!-- only a comment -->", "< expected"},
      {"<a><?b?>c</a>", "< expected"},
      {"<a ' '='c'/>", "Attribute/Node name cannot be empty"},
      {"< ='c'/>", "Attribute/Node name cannot be empty"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(ParseError(c.text), c.message);
  }
}

TEST(XmlTree, KeepsDeclarationsInFrontOfTheRoot) {
  const XmlTree tree("<?xml version= \"1.0\" encoding = 'UTF-8' ?> <?b?><r><?c?><d/></r>");
  ASSERT_EQ(tree.header().Count(), 2u);
  EXPECT_EQ(Dump(tree.header().Item(0)), "xml(version=\"1.0\")(encoding=\"UTF-8\")");
  EXPECT_EQ(Dump(tree.header().Item(1)), "b");
  EXPECT_EQ(Dump(tree.root()), "r{d}");
}

TEST(XmlTree, DecodesOnlyWhatTheParserItselfOwes) {
  const struct {
    const char* text;
    const char* tree;
  } cases[] = {
      {"<a>1 &amp;lt; 2</a>", "a{\"1 &lt; 2\"}"},
      {"<a>&lt;&amp;&quot;&gt;&#65;&</a>", "a{\"<&&quot;&gt;&#65;&\"}"},
      {"<a b='x&quot;y&amp;quot;&lt;'/>", "a(b=\"x\"y&quot;&lt;\")"},
      {"<a>&amp;&amp;lt;&lt;</a>", "a{\"&&lt;<\"}"},
  };
  for (const auto& c : cases) EXPECT_EQ(DumpOf(c.text), c.tree);
}

TEST(XmlTree, CopiesNoTextThatNeedsNoDecoding) {
  const std::string text = "<a b='x&y'>plain &gt; text</a>";
  const XmlTree tree(text);
  for (const std::string_view view :
       {tree.root().name, tree.root().Attribute("b"), tree.root().Text()}) {
    EXPECT_GE(view.data(), text.data());
    EXPECT_LE(view.data() + view.size(), text.data() + text.size());
  }
}

TEST(XmlTree, NestsAsDeepAsTheTextDoes) {
  constexpr std::size_t kDepth = 1000000;
  std::string text;
  for (std::size_t i = 0; i < kDepth; ++i) text += "<a>";
  std::string closed = text;
  for (std::size_t i = 0; i < kDepth; ++i) closed += "</a>";
  for (const std::string& nested : {text, closed}) {
    const XmlTree tree(nested);
    std::size_t depth = 1;
    const TXMLNode* node = &tree.root();
    for (; !node->children.empty(); node = &*node->children.begin()) ++depth;
    EXPECT_EQ(depth, kDepth);
  }
}

TEST(XmlTree, SurvivesItsMove) {
  const std::string text = "<a><b/></a>";
  XmlTree tree(text);
  const XmlTree moved = std::move(tree);
  EXPECT_EQ(Dump(moved.root()), "a{b}");
}

TEST(TXMLNode, FindsNamesWithAndWithoutPrefix) {
  const XmlTree tree("<r x='1' n:x='2'><goods/><ns:Goods>p</ns:Goods><Goods>q</Goods></r>");
  const TXMLNodeList& children = tree.root().children;
  EXPECT_EQ(children.Find("Goods"), &children.Item(1));
  EXPECT_EQ(children.Find("ns:Goods"), &children.Item(1));
  EXPECT_EQ(children.Find("goods"), &children.Item(0));
  EXPECT_EQ(children.Find("GOODS"), nullptr);
  EXPECT_EQ(tree.root().Attribute("x"), "1");
  EXPECT_EQ(tree.root().Attribute("n:x"), "2");
  EXPECT_EQ(tree.root().Attribute("y"), "");
  EXPECT_EQ(children.Item(1).LocalName(), "Goods");
}

TEST(TXMLNode, TextIsTheFirstTextOrCData) {
  const XmlTree tree("<a><b/><!--no--><![CDATA[yes]]>later</a>");
  EXPECT_EQ(tree.root().Text(), "yes");
  EXPECT_EQ(tree.root().children.Item(0).Text(), "");
  EXPECT_EQ(tree.root().children.Item(1).Text(), "no");
}

TEST(DecodeXmlEntities, DecodesNamesThenDecimalReferences) {
  const struct {
    const char* value;
    const char* decoded;
  } cases[] = {
      {"", ""},
      {"plain; text", "plain; text"},
      {"&apos;&gt;&lt;&quot;&amp;", "'><\"&"},
      {"1 &lt; 2", "1 < 2"},
      {"&amp;lt;&amp;amp;", "&lt;&amp;"},
      {"&Amp;&nbsp;& &", "&Amp;&nbsp;& &"},
      {"&#65;&#192;&#255;&#256;&#1040;&#99999999999999999999;", "A\xC0\xFF???"},
      {"&#0;&#;&#x41;&#-5;&# 65;", "&#0;&#;&#x41;&#-5;&# 65;"},
      {"&#0;&#65;", "&#0;A"},
      {"&#65;&#65", "A&#65"},
      {"&#6&#65;&#66;", "&#6&#65;B"},
      {"&amp;#65;", "A"},
      {"&#38;#65;", "A"},
      {"&#38;#38;#38;#65;&", "A&"},
      {"&&#35;65;", "&#65;"},
  };
  for (const auto& c : cases) {
    std::string buffer;
    EXPECT_EQ(DecodeXmlEntities(c.value, buffer), c.decoded) << c.value;
  }
}

}  // namespace
}  // namespace customsconv
