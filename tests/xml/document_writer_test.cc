#include "xml/document_writer.h"

#include <gtest/gtest.h>

#include "support/catalogue_builder.h"

namespace customsconv {
namespace {

constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n";

// A type with the given Fields section, and one document of it.
class WriterWorld {
 public:
  explicit WriterWorld(std::string_view fields, std::string_view header = "FullName=T\n",
                       std::string_view kord_ini = {})
      : world_(kord_ini),
        types_("Kordwin.dcf", false,
               world_.Dcf("[T.HEADER]\n" + std::string(header) + "[T.Fields]\n" +
                          std::string(fields))),
        document_("T", types_, world_) {
    document_.OpenBlock("", 0, false);
  }

  TDocFieldList& Root() { return document_.RootRecord(); }
  // Stores `value` (UTF-8) as it is, past the rules of the document.
  WriterWorld& Set(int position, std::string_view value) {
    Root().SetText(position, Win(value));
    return *this;
  }
  // A new record of the top-level block at `position`.
  TDocFieldList& AddRecord(int position) { return Root().EnsureRecords(position).Append(1); }

  // The text as it is written, "\n" in place of CR LF.
  std::string Bytes() {
    std::string text = DocumentWriter().Text(document_);
    for (std::size_t end = text.find("\r\n"); end != text.npos; end = text.find("\r\n", end)) {
      text.erase(end, 1);
    }
    return text;
  }
  // The same as UTF-8, without the first line.
  std::string Body() {
    const std::string bytes = Bytes();
    return Utf8(std::string_view(bytes).substr(bytes.find('\n') + 1));
  }
  TDocument& document() { return document_; }

 private:
  CatalogueWorld world_;
  TDocTypeList types_;
  TDocument document_;
};

// What one field with one value becomes.
std::string Written(std::string_view field, std::string_view value,
                    std::string_view kord_ini = {}) {
  WriterWorld world(std::string(field) + "\n", "FullName=T\n", kord_ini);
  return world.Set(0, value).Body();
}

TEST(DocumentWriter, NestsElementsByTheNamesOfTheFields) {
  const struct {
    const char* what;
    const char* fields;
    std::vector<const char*> values;
    const char* body;
  } cases[] = {
      {"inner elements close before the next one opens",
       "A#B#C1=C5\nA#B#C2=C5\nA#D=C5\n",
       {"1", "2", "3"},
       "  <A>\n    <B>\n      <C1>1</C1>\n      <C2>2</C2>\n    </B>\n    <D>3</D>\n  </A>\n"},
      {"the path is left word by word",
       "A#B#C=C5\nA#BB#C=C5\nA=C5\nA#E=C5\n",
       {"1", "2", "3", "4"},
       "  <A>\n    <B>\n      <C>1</C>\n    </B>\n    <BB>\n      <C>2</C>\n    </BB>\n  </A>\n"
       "  <A>3</A>\n  <A>\n    <E>4</E>\n  </A>\n"},
      {"empty elements vanish", "A#B#C=C5\nD#E=C5\nF=C5\n", {"", "", "1"}, "  <F>1</F>\n"},
      {"but marked ones stay",
       "A#B#C=C5 | PRNT=\"1\"\nA#D=C5\nE#F=C5 | PRNT=\"1\"\n",
       {"", "1", "2"},
       "  <A>\n    <B></B>\n    <D>1</D>\n  </A>\n  <E>\n    <F>2</F>\n  </E>\n"},
      {"a marked element around empty ones",
       "A=C5\nX#Y=C5 | PRNT=\"1\"\nX#Z#W=C5\n",
       {"", "", ""},
       "  <X></X>\n"},
      {"a path of its own",
       "A1=C5 | NAMESPACE=\"c:P#c:Q\"\nA2=C5 | NAMESPACE=\"NOP\"\nNOP=C5\n",
       {"1", "2", "3"},
       "  <c:P>\n    <c:Q>1</c:Q>\n  </c:P>\n"},
      {"NOP is a name like others where the path replaces it",
       "NOP=C5 | NAMESPACE=\"A\"\n",
       {"1"},
       "  <A>1</A>\n"},
      {"the last line tells whether an element is closed on it",
       "A#A=C5\nB=C5\n",
       {"1", "2"},
       "  <A>\n    <A>1</A></A>\n  <B>2</B>\n"},
      {"text of the enclosing element",
       "A#B=C5\nX#NT=C5 | NAMESPACE=\"X#NodeText\"\nX#Y#N=C5 | NAMESPACE=\"X#Y#NodeText\"\n",
       {"", "x", ""},
       "  <X>x</X>\n"},
      {"text behind a value",
       "A#B=C5\nA#N=C5 | NAMESPACE=\"A#NodeText\"\n",
       {"1", "x"},
       "  <A>\n    <B>1</B>x\n  </A>\n"},
      {"text of nothing but blanks",
       "A#B#N=C5 | NAMESPACE=\"A#B#NodeText\"\nC=C5\n",
       {"  ", "1"},
       "  <C>1</C>\n"},
      {"marks are deleted everywhere, values included",
       "A#B=C9\n",
       {"x P=1 P=1y"},
       "  <A>\n    <B>xy</B>\n  </A>\n"},
      {"a mark deleted leaves what then looks like one",
       "A=C9\n",
       {"P= P= P=11"},
       "  <A>P= P=1</A>\n"},
      {"a CR inside a value ends the line",
       "A#B=C9\nA#C=C9\n",
       {"1\r2\n\r\r\n3", "4"},
       "  <A>\n    <B>1\n2 \n\n 3</B>\n    <C>4</C>\n  </A>\n"},
  };
  for (const auto& c : cases) {
    WriterWorld world(c.fields);
    int position = 0;
    for (const char* value : c.values) world.Set(position++, value);
    EXPECT_EQ(world.Body(), c.body) << c.what;
  }
}

TEST(DocumentWriter, WritesTheRecordsOfBlocks) {
  WriterWorld world(
      "HEAD=C5\n"
      "G { | NAMESPACE=\"List#Goods\"\n"
      "  N#NO=C5\n"
      "  D {\n"
      "    X=C5\n"
      "  }\n"
      "  Z=C5\n"
      "}\n"
      "E {\n"
      "  Y=C5\n"
      "}\n"
      "TAIL=C5 | NAMESPACE=\"List#Tail\"\n");
  TDocFieldList& first = world.AddRecord(1);
  first.SetText(0, "1");
  first.EnsureRecords(1).Append(1).SetText(0, "a");
  first.EnsureRecords(1).Append(2).SetText(0, "b");
  first.SetText(2, "z");
  world.AddRecord(1);
  world.AddRecord(1).SetText(2, "3");
  world.AddRecord(2);
  world.Set(3, "end");
  EXPECT_EQ(world.Body(),
            "  <List>\n"
            "    <Goods>\n"
            "      <N>\n        <NO>1</NO>\n      </N>\n"
            "      <D>\n        <X>a</X>\n      </D>\n"
            "      <D>\n        <X>b</X>\n      </D>\n"
            "      <Z>z</Z>\n"
            "    </Goods>\n"
            "    <Goods>\n      <Z>3</Z>\n    </Goods>\n"
            "  </List>\n"
            "  <List>\n    <Tail>end</Tail>\n  </List>\n");
}

TEST(DocumentWriter, FormatsValuesByTheirType) {
  const struct {
    const char* field;
    const char* value;
    const char* written;  // null: no element
  } cases[] = {
      {"A=C9", "<ё & \"я\">\x01\t", "&lt;ё &amp; \"я\"&gt;  "},
      {"A=S9", "a>b", "a&gt;b"},
      {"A=9", "a<b", "a&lt;b"},
      {"A=Z9", "<x/>&", "<x/>&"},
      {"A=B9", "x", nullptr},
      {"A=Q9", "x", nullptr},
      {"A=L", "да", "true"},
      {"A=L", "0", "false"},
      {"A=N9", "12,50", "12.5"},
      {"A=N9", "12.500000", "12.5"},
      {"A=N9", "100", "100"},
      {"A=N9", "100.0", "100"},
      {"A=N9", "007", "7"},
      {"A=N9", "-0,05", "-0.05"},
      {"A=N9", " .5", "0.5"},
      {"A=N9", "1.2345675", "1.234568"},
      {"A=N9", "1e3", "1000"},
      {"A=N9", "1 000", "0"},
      {"A=N9", "12345678.1234567", "12345678.123457"},     // the point in ninth place
      {"A=N9", "123456789.1234567", "123456789.1234567"},  // in tenth: the text itself
      {"A=N9", "000000001,5000000", "1.5000000"},
      {"A=N9", "000000000.1", "0.1"},
      {"A=N9", "000000000.0", "0"},
      {"A=D", "11.06.2015", "2015-06-11"},
      {"A=D", " 1.6.15", "2015-06-01"},
      {"A=D", "11/06/2015", "2015-06-11"},
      {"A=D", "11-06-15", "2015-06-11"},
      {"A=D", "110615", "2015-06-11"},
      {"A=D", "11062015", "2015-06-11"},
      {"A=D", "2015-06-11", nullptr},
      {"A=D", "30.02.2015", nullptr},
  };
  for (const auto& c : cases) {
    const std::string body =
        c.written == nullptr ? "" : "  <A>" + std::string(c.written) + "</A>\n";
    EXPECT_EQ(Written(c.field, c.value), body) << c.field << " " << c.value;
  }
}

TEST(DocumentWriter, CollapsesBlanksOfValuesThatMissTheirPattern) {
  const char* field = "A=C20 | PATTERN=\"^\\d+ <\"";
  const struct {
    const char* field;
    const char* value;
    const char* written;
    const char* ini;
  } cases[] = {
      {field, " a  b   c ", "a b c", ""},
      {field, "12 <  x", "12 &lt;  x", ""},  // the raw text matches
      {field, " a  b ", " a  b ", "[ED]\nNDSp=0\n"},
      {"A=C20", " a  b ", " a  b ", ""},
      {"A=C20 | PATTERN=\"(\"", " a  b", "a b", ""},  // no pattern at all matches nothing
      {"A=C20 | PATTERN=\"b\"", " a  b", " a  b", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Written(c.field, c.value, c.ini), "  <A>" + std::string(c.written) + "</A>\n")
        << c.field << c.value;
  }
}

TEST(DocumentWriter, CutsValuesIntoPieces) {
  const struct {
    const char* field;
    const char* value;
    std::vector<const char*> pieces;
  } cases[] = {
      {"A=C10 | SEQ=\"1\"", "one two three", {"one two", "three"}},
      {"A=C10X2 | SEQ=\"1\"", "one two three", {"one two three"}},
      {"A=5,5 | SEQ=\"1\"", "one two three", {"one two", "three"}},
      {"A=C20 | SEQ=\"1\"", "one\r\rtwo", {"one", "two"}},
      {"A=C20 | SEQ=\"1\"", "\rtwo", {"two"}},
      {"A=C0 | SEQ=\"1\"", "one two", {"one two"}},
  };
  for (const auto& c : cases) {
    std::string body;
    for (const char* piece : c.pieces) body += "  <A>" + std::string(piece) + "</A>\n";
    EXPECT_EQ(Written(c.field, c.value), body) << c.field << " " << c.value;
  }
}

TEST(DocumentWriter, MakesNamesValid) {
  const struct {
    const char* word;
    const char* name;
  } cases[] = {{"Total Sum", "_Total_Sum"},
               {"1st", "G_1st"},
               {"a\"b&c'd<e>", "_a_b_c_d_e_"},
               {"_a", "_a"},
               {"Ёлка", "Ёлка"},
               {"яма", "яма"},
               {"-a", "G_-a"},
               {"1 a", "_1_a"},
               {"", "G_"}};
  for (const auto& c : cases) EXPECT_EQ(Utf8(ValidElementName(Win(c.word))), c.name) << c.word;
  EXPECT_EQ(Written("P#A<=C5", "1"), "  <P>\n    <_A_ Name=\"P#A&lt;\">1</_A_>\n  </P>\n");
}

TEST(DocumentWriter, WritesThePartsOfStructuredValues) {
  const std::string plain = "G=C50\nG.NAME=p;0;N;\nG.MAKER=q;0;M;\n";
  const std::string multi = "G=C50\nG.NAME=p;0;MULTI;\nG.MAKER=q;0;M;\n";
  const struct {
    const char* what;
    const std::string& fields;
    std::string value;
    const char* body;
  } cases[] = {
      {"a prefix and a value", plain, "\x1E\x01pre<\x1F\x01v&\x1E\x02\x1F\x02w",
       "  <G><NAME Pref=\"pre&lt;\">\nv&amp;\n</NAME><MAKER>\nw\n</MAKER></G>\n"},
      {"text in front, a part without mark, an empty part", plain, "x\x1E\x02y\x1E\x01\x1F\x01",
       "  <G><Unknown>\nx\n</Unknown><MAKER>\ny\n</MAKER></G>\n"},
      {"a number that no part has", plain, "\x1E\x07z\x1E", "  <G><Unknown>\nz\n</Unknown></G>\n"},
      {"a part number that looks like a mark", plain, "\x1E\x1Ep\x1F\x1Ez\x1E\x1F",
       "  <G><Unknown Pref=\"p\">\nz\n</Unknown></G>\n"},
      {"several lines", multi,
       "\x1E\x01\x1F\x01"
       "a\x1E\x02\x1F\x02"
       "b\x1E\x01\x1F\x01"
       "c",
       "  <G><Line>\n</Line>\n<Line>\n<NAME>\na\n</NAME><MAKER>\nb\n</MAKER></Line>\n<Line>\n"
       "<NAME>\nc\n</NAME>\n</Line></G>\n"},
  };
  for (const auto& c : cases) {
    WriterWorld world(c.fields);
    world.Root().SetText(0, c.value);
    EXPECT_EQ(world.Body(), c.body) << c.what;
  }
}

TEST(DocumentWriter, TheHeaderDecidesFormAndEncoding) {
  const std::string value = Win("Я");
  const std::string utf8_head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  const std::string rowset =
      "<ROWSET>\n <ROW xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" doctype=\"KIND\">\n";
  const struct {
    const char* what;
    const char* fields;
    const char* header;
    std::string text;
  } cases[] = {
      {"no root", "A=C5\n", "XmlCoding=UTF-8\n", std::string(kHead) + "  <A>" + value + "</A>\n"},
      {"a root", "A=C5\n", "Prefix=<d:R x=\"1\">\nXmlCoding=Win-1251\n",
       std::string(kHead) + "<d:R x=\"1\">\n  <A>" + value + "</A>\n</d:R>\n"},
      {"UTF-8 values in elements that stay as they are", "Ы#Ю=C5\n", "Prefix=<R>\n",
       utf8_head + "<R>\n  <" + Win("Ы") + ">\n    <Ю>Я</Ю>\n  </" + Win("Ы") + ">\n</R>\n"},
      {"a signature block", "A=C5\nSDS_SIGNATURE#SDS_SIGNATURE_ITEM=C5\n",
       "Prefix=<R>\nXmlType=KIND\n", utf8_head + rowset + "    <A>Я</A>\n  </ROW>\n</ROWSET>\n"},
      {"an empty document", "B=B5\n", "Prefix=<R>\n", utf8_head + "<R>\n</R>\n"},
  };
  for (const auto& c : cases) {
    WriterWorld world(c.fields, c.header);
    EXPECT_EQ(world.Set(0, "Я").Bytes(), c.text) << c.what;
  }
}

TEST(DocumentWriter, GivesLinesToCallersWhoWantThem) {
  WriterWorld world("A=C9\n", "Prefix=<R>\n");
  world.Set(0, "1\r2");
  EXPECT_EQ(ExportXml(&world.document()),
            (std::vector<std::string>{"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "<R>", "  <A>1",
                                      "2</A>", "</R>"}));
  EXPECT_TRUE(ExportXml(nullptr).empty());
}

TEST(DocumentWriter, WritesADocumentWithoutSlots) {
  CatalogueWorld world;
  TDocTypeList types("Kordwin.dcf", false,
                     world.Dcf("[T.HEADER]\n[T.Fields]\nA=C5\nB {\nC=C5\n}\n"));
  const TDocument document("T", types, world);
  EXPECT_EQ(DocumentWriter().Text(document),
            std::string(kHead.substr(0, kHead.size() - 1)) + "\r\n");
}

}  // namespace
}  // namespace customsconv
