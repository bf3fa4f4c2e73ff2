#include "xml/write/document_writer.h"

#include <gtest/gtest.h>

#include "support/catalogue_builder.h"
#include "text/words.h"

namespace customsconv {
namespace {

// A type and one document of it.
struct WriterWorld : TypeWorld {
  template <typename... Texts>
  explicit WriterWorld(const Texts&... texts) : TypeWorld(texts...) {
    document.OpenBlock("");
  }
  // Stores `value` (UTF-8) as it is, past the rules of the document.
  void Set(int position, std::string_view value) {
    document.RootRecord().SetText(position, Win(value));
  }
  TDocFieldList& AddRecord(int position) {
    return document.RootRecord().EnsureRecords(position).Append(1);
  }
  // The text with "|" for each CR LF.
  std::string Bytes() { return ReplaceAll(DocumentWriter().Text(document), "\r\n", "|"); }
  // As UTF-8, without the first line and the indentation.
  std::string Body() {
    std::string text = Utf8(Bytes());
    text.erase(0, text.find('|'));
    while (Contains(text, "|  ")) text = ReplaceAll(text, "|  ", "|");
    return text.substr(1);
  }

  TDocument document{"T", types, *this};
};

// What one field with one value becomes.
std::string Written(const std::string& field, std::string_view value, std::string_view ini = {}) {
  WriterWorld world(field, "FullName=T\n", ini);
  world.Set(0, value);
  return world.Body();
}

TEST(DocumentWriter, NestsElementsByTheNamesOfTheFields) {
  const std::string inner = "A#B#C1=9\nA#B#C2=9\nA#D=9", twins = "A#B#C=9\nA#BB#C=9\nA=9\nA#E=9";
  const std::string marks = "A#B#C=9 | PRNT=\"1\"\nA#D=9\nE#F=9 | PRNT=\"1\"";
  const std::string own_path = "A=9 | NAMESPACE=\"c:P#c:Q\"\nB=9 | NAMESPACE=\"NOP\"\nNOP=9";
  const std::string text_of_x =
      "A#B=9\nX=9 | NAMESPACE=\"X#NodeText\"\nY=9 | NAMESPACE=\"X#Y#NodeText\"";
  // Values have "," between them, "-" for none.
  const std::tuple<const char*, std::string, std::string, const char*> cases[] = {
      {"inner ones close first", inner, "1,2,3",
       "<A>|<B>|<C1>1</C1>|<C2>2</C2>|</B>|<D>3</D>|</A>|"},
      {"left word by word", twins, "1,2,3,4",
       "<A>|<B>|<C>1</C>|</B>|<BB>|<C>2</C>|</BB>|</A>|<A>3</A>|<A>|<E>4</E>|</A>|"},
      {"empty elements vanish", "A#B#C=9\nD#E=9\nF=9", "-,-,1", "<F>1</F>|"},
      {"marked ones stay", marks, "-,1,2", "<A>|<B></B>|<D>1</D>|</A>|<E>|<F>2</F>|</E>|"},
      {"a path of its own", own_path, "1,2,3", "<c:P>|<c:Q>1</c:Q>|</c:P>|"},
      {"NOP only by the name in use", "NOP=9 | NAMESPACE=\"A\"", "1", "<A>1</A>|"},
      {"a child of the same name", "A#A=9\nB=9", "1,2", "<A>|<A>1</A></A>|<B>2</B>|"},
      {"text of an element", text_of_x, "-,x", "<X>x</X>|"},
      {"text behind a value", text_of_x, "1,x,y", "<A>|<B>1</B>|</A>|<X>x|<Y>y</Y>|</X>|"},
      {"text of blanks", "N=9 | NAMESPACE=\"A#B#NodeText\"\nC=9", "  ,1", "<C>1</C>|"},
      {"marks go from values, too", "A=19", "x P=1 P=1y P= P=11", "<A>xy P=1</A>|"},
      {"a CR ends the line", "A=9\nB=9", "1\r2\n\r\r\n3,4", "<A>1|2 || 3</A>|<B>4</B>|"},
      {"line ends of raw text", "A=Z9", "1\n2\r\n3\r", "<A>1|2|3|</A>|"}};
  for (const auto& [what, fields, values, body] : cases) {
    WriterWorld world(fields);
    int position = 0;
    for (const std::string_view value : Words(values, ",")) {
      world.Set(position++, value == "-" ? "" : value);
    }
    EXPECT_EQ(world.Body(), body) << what;
  }
}

TEST(DocumentWriter, WritesTheRecordsOfBlocks) {
  WriterWorld world(
      "H=9\nG { | NAMESPACE=\"List#Goods\"\nN#NO=9\nD {\nX=9\n}\nZ=9\n}\nE {\nY=9\n}\n"
      "T=9 | NAMESPACE=\"List#Tail\"");
  TDocFieldList& first = world.AddRecord(1);
  first.SetText(0, "1");
  first.EnsureRecords(1).Append(1).SetText(0, "a");
  first.EnsureRecords(1).Append(2).SetText(0, "b");
  first.SetText(2, "z");
  for (const int block : {1, 2}) world.AddRecord(block);  // empty ones leave nothing
  world.AddRecord(1).SetText(2, "3");
  world.Set(3, "end");
  EXPECT_EQ(world.Bytes(),
            "<?xml version=\"1.0\" encoding=\"windows-1251\"?>|"
            "  <List>|    <Goods>|      <N>|        <NO>1</NO>|      </N>|"
            "      <D>|        <X>a</X>|      </D>|      <D>|        <X>b</X>|      </D>|"
            "      <Z>z</Z>|    </Goods>|    <Goods>|      <Z>3</Z>|    </Goods>|  </List>|"
            "  <List>|    <Tail>end</Tail>|  </List>|");
}

TEST(DocumentWriter, FormatsValuesByTheirType) {
  // "stored=written"; nothing behind the "=": no element.
  const std::pair<const char*, std::vector<std::string_view>> types[] = {
      {"A=C9", {"<ё & \"я\">\x01\t=&lt;ё &amp; \"я\"&gt;  "}},
      {"A=S9", {"a>b=a&gt;b"}},
      {"A=9", {"a<b=a&lt;b"}},
      {"A=Z9", {"<x/>&=<x/>&"}},
      {"A=B9", {"x="}},
      {"A=L", {"да=true", "0=false", "x=false"}},
      // From a point in tenth place on the text itself is written.
      {"A=N9",
       {"12,50=12.5", "12.500000=12.5", "100=100", "100.0=100", "007=7", "-0,05=-0.05", " .5=0.5",
        "\r\n\t3\r\n=3", "\r\n      12,5\r\n=12.5", "\n 123456789.1234567\n=123456789.1234567",
        "1.2345675=1.234568", "1e3=1000", "1 000=0", "12345678.1234567=12345678.123457",
        "123456789.1234567=123456789.1234567", "000000001,5000000=1.5000000", "000000000.1=0.1",
        "000000000.0=0"}},
      {"A=D",
       {"11.06.2015=2015-06-11", " 1.6.15=2015-06-01", "11/06/2015=2015-06-11",
        "\r\n11.06.2015\r\n=2015-06-11", "\t11/06/15\n=2015-06-11", "\n  110615 =2015-06-11",
        "11-06-15=2015-06-11", "110615=2015-06-11", "11062015=2015-06-11",
        "2015-06-11=", "30.02.2015="}}};
  for (const auto& [field, values] : types) {
    for (const std::string_view value : values) {
      const std::size_t equals = value.find('=');
      std::string body(value.substr(equals + 1));
      if (!body.empty()) body = "<A>" + body + "</A>|";
      EXPECT_EQ(Written(field, value.substr(0, equals)), body) << value;
    }
  }
}

TEST(DocumentWriter, CollapsesBlanksOfValuesThatMissTheirPattern) {
  const char* field = "A=C20 | PATTERN=\"^\\d+ <\"";
  EXPECT_EQ(Written(field, " a  b   c "), "<A>a b c</A>|");
  EXPECT_EQ(Written(field, "12 <  x"), "<A>12 &lt;  x</A>|") << "the raw text matches";
  EXPECT_EQ(Written(field, " a  b ", "[ED]\nNDSp=0\n"), "<A> a  b </A>|");
  EXPECT_EQ(Written("A=C20", " a  b "), "<A> a  b </A>|");
  EXPECT_EQ(Written("A=C20 | PATTERN=\"b\"", " a  b"), "<A> a  b</A>|");
  EXPECT_EQ(Written("A=C20 | PATTERN=\"(\"", " a  b"), "<A>a b</A>|") << "no expression";
}

TEST(DocumentWriter, CutsValuesIntoPieces) {
  for (const char* field : {"A=C10", "A=5,5", "A=C5X2"}) {
    const std::string in_pieces = std::string(field) + " | SEQ=\"1\"";
    EXPECT_EQ(Written(in_pieces, "\rone two three"), "<A>one two</A>|<A>three</A>|") << field;
  }
  EXPECT_EQ(Written("A=C0 | SEQ=\"1\"", "one two three"), "<A>one two three</A>|");
}

TEST(DocumentWriter, MakesNamesValid) {
  for (const auto& [name, valid] :
       Cases({"Total Sum -> _Total_Sum", "1\"2&3'4<5> -> _1_2_3_4_5_", "1st -> G_1st", "-a -> G_-a",
              "_a -> _a", "Ёлка -> Ёлка", "яма -> яма"})) {
    EXPECT_EQ(Utf8(ValidElementName(Win(name))), valid);
  }
  EXPECT_EQ(Written("P#A<=C5", "1"), "<P>|<_A_ Name=\"P#A&lt;\">1</_A_>|</P>|");
}

TEST(DocumentWriter, WritesThePartsOfStructuredValues) {
  const char* plain = "G=C50\nG.NAME=p;0;N;\nG.MAKER=q;0;M;";
  EXPECT_EQ(Written(plain, "\x1E\x01pre<\x1F\x01v&\x1E\x02\x1F\x02w"),
            "<G><NAME Pref=\"pre&lt;\">|v&amp;|</NAME><MAKER>|w|</MAKER></G>|");
  EXPECT_EQ(Written(plain, "x\x1E\x02y\x1E\x01\x1F\x01\x1E\x07z\x1E"),
            "<G><Unknown>|x|</Unknown><MAKER>|y|</MAKER><Unknown>|z|</Unknown></G>|");
  EXPECT_EQ(Written(plain, "\x1E\x1Ep\x1F\x1Ez\x1E\x1F"),  // part 30, and 31 cut short
            "<G><Unknown Pref=\"p\">|z|</Unknown></G>|");
  EXPECT_EQ(
      Written("G=C50\nG.NAME=p;0;MULTI;\nG.MAKER=q;0;M;", "\x1E\x01\x1F\x01v\x1E\x02w\x1E\x01x"),
      "<G><Line>|</Line>|<Line>|<NAME>|v|</NAME><MAKER>|w|</MAKER></Line>|<Line>|<NAME>|x|"
      "</NAME>|</Line></G>|");
}

TEST(DocumentWriter, TheHeaderDecidesFormAndEncoding) {
  const std::string win = Win("Я"), cyrillic = Win("Ы");
  const std::string xml = "<?xml version=\"1.0\" encoding=";
  const std::tuple<const char*, const char*, std::string> cases[] = {
      {"A=C5", "XmlCoding=UTF-8\n", xml + "\"windows-1251\"?>|  <A>" + win + "</A>|"},
      {"A=C5", "Prefix=<d:R x=\"1\">\nXmlCoding=Win-1251\n",
       xml + "\"windows-1251\"?>|<d:R x=\"1\">|  <A>" + win + "</A>|</d:R>|"},
      // Only lines with values are converted.
      {"Ы#Ю=C5", "Prefix=<R>\n",
       xml + "\"UTF-8\"?>|<R>|  <" + cyrillic + ">|    <Ю>Я</Ю>|  </" + cyrillic + ">|</R>|"},
      {"A=C5\nSDS_SIGNATURE#SDS_SIGNATURE_ITEM=C5", "Prefix=<R>\nXmlType=KIND\n",
       xml + "\"UTF-8\"?>|<ROWSET>| <ROW xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
             "doctype=\"KIND\">|    <A>Я</A>|  </ROW>|</ROWSET>|"},
      {"B=B5", "Prefix=<R>\n", xml + "\"UTF-8\"?>|<R>|</R>|"}};
  for (const auto& [fields, header, text] : cases) {
    WriterWorld world(fields, header);
    world.Set(0, "Я");
    EXPECT_EQ(world.Bytes(), text);
    EXPECT_EQ(ExportXml(&world.document).size(), Words(text, "|").size());
  }
  EXPECT_TRUE(ExportXml(nullptr).empty());
}

}  // namespace
}  // namespace customsconv
