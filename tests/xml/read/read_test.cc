#include <gtest/gtest.h>
#include <zlib.h>

#include "support/catalogue_builder.h"
#include "support/document_dump.h"
#include "xml/read/base64.h"
#include "xml/read/xml_container.h"
#include "xml/read/xml_text.h"
#include "xml/read/xml_value_lookup.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\IN\\decl.xml";

constexpr const char* kCatalogue = R"([ESADout.HEADER]
ShortName=ЭД ДТ
XmlType=ESADout
Prefix=<ESADout xmlns:cat="u">
[ESADout.Fields]
Kind=C10 | NAMESPACE="cat:Kind"
Bare=C10
Mode=C10 | NAMESPACE="Transport#cat:Border#Mode"
Since=D | NAMESPACE="Since"
Cost=N15.2 | NAMESPACE="Cost"
Lines=C250 | NAMESPACE="Line" SEQ="1"
List=C250 | NAMESPACE="List" SEQ="2"
WAY_CHOICE=C5
Chosen=C10 | NAMESPACE="Chosen" CHOICE="2"
Group=B | NAMESPACE="Group"
InGroup=C10 | NAMESPACE="Group#Inside"
Scan=Y | NAMESPACE="Scan"
Version=C10 | NAMESPACE="att=Version"
Goods { NAMESPACE="Shipment#Goods"
  Number=C10 | NAMESPACE="Number"
Id=C10 | NAMESPACE="att=id"
Mark { NAMESPACE="cat:Mark"
    Text=C10
Sign=C10 | NAMESPACE="Sign"
}
}
[Inventory.HEADER]
ShortName=Inventory
XmlType=Inventory
Prefix=<Inventory xmlns="u">
[Inventory.Fields]
Number=C10 | NAMESPACE="Number"
)";

// A program folder and one XML file. Texts are UTF-8.
struct World : CatalogueWorld {
  World() : CatalogueWorld(kCatalogue) {}
  TXMLContainer Open(std::string_view xml) {
    Put(xml);
    return TXMLContainer(kFile, types, *this);
  }
  void Put(std::string_view xml) { host.files[kFile] = xml; }

  TDocTypeList types{"Kordwin.dcf", /*all_files=*/false, *this};
};

std::string Declaration(std::string_view content) {
  return "<?xml version=\"1.0\"?><ESADout x=\"\">" + std::string(content) + "</ESADout>";
}

std::string Envelope(std::string_view document) {
  return "<DocBody>" + std::string(document) + "</DocBody>";
}

// What the container yields: "code occurrence: fields" for each document.
std::string DumpAll(TXMLContainer& container) {
  std::string text;
  while (const std::unique_ptr<TDocument> document = container.Next()) {
    EXPECT_FALSE(document->Modified);
    text += document->DocInfo().Code + " " + std::to_string(container.CurOccurrence()) + ": " +
            Dump(document->RootRecord()) + "\n";
  }
  return text;
}

TEST(TXMLContainer, YieldsDocumentsByKind) {
  const std::string first = "<ESADout x=\"\"><Kind>1</Kind></ESADout>";
  const std::string second = "<Inventory a='b'><Number>2</Number></Inventory>\r\n";
  const std::string third = "<ESADout x=\"\"><Kind>3</Kind></ESADout>";
  const std::string xml = "<?xml version=\"1.0\"?>";
  const std::tuple<const char*, const char*, std::string> cases[] = {
      {"envelopes win over declarations",
       "ESADout 1: Kind=\"1\"\nESADout 2: Kind=\"3\"\nInventory 1: Number=\"2\"\n",
       xml + "<r>" + Envelope(first) + Envelope("\n" + second) + Envelope(third)},
      {"a declaration each", "Inventory 1: Number=\"2\"\nESADout 1: Kind=\"1\"\n",
       xml + second + xml + "\n" + first},
      {"letter case, unknown kinds", "ESADout 1: Kind=\"1\"\n",
       Envelope("<Other>") + Envelope("<esadOUT >") + first},
      {"two names of one type are two kinds",
       "ESADout 1: Kind=\"1\"\nESADout 1: Kind=\"1\"\nInventory 1: Number=\"2\"\n",
       Envelope("<ESADout_CUv2 a=''>") + Envelope(first) + Envelope("<Inventory_CU >") + second},
      {"a root without attributes is not found", "ESADout 1: \n", Envelope("<ESADout></ESADout>")},
      {"a line break belongs to the name", "", Envelope("<ESADout\nx='y'></ESADout>")},
      {"neither envelope nor declaration", "", first}};
  for (const auto& [what, documents, text] : cases) {
    World world;
    TXMLContainer container = world.Open(text);
    EXPECT_EQ(DumpAll(container), documents) << what;
  }
}

TEST(TXMLContainer, ListsKindsWithTheirCounts) {
  World world;
  const TXMLContainer container =
      world.Open(Envelope("<Inventory >") + Envelope("<ESADout_CU >") + Envelope("<inventory >"));
  ASSERT_EQ(container.DocList().size(), 2u);
  EXPECT_EQ(container.DocList()[0].text + ", " + Utf8(container.DocList()[1].text),
            "Inventory (2), ДТ (1)");
  EXPECT_EQ(container.DocList()[0].Count(), 2);
  EXPECT_EQ((TXMLContainer::Kind{"A (B) (12)", 0}.Count()), 1);
}

TEST(TXMLContainer, FillsFieldsByTheirXmlPaths) {
  const std::pair<const char*, const char*> cases[] = {
      {"<x:KIND>a</x:KIND>", "Kind=\"a\""},
      {"<Kind Version='1'>&amp;lt;&#192;&quot;</Kind>", "Kind=\"<А\"\""},
      {"<a:Transport><Border><Mode>a</Mode><x/></Border></a:Transport>", "Mode=\"a\""},
      {"<Group><Inside>a</Inside></Group>", "InGroup=\"a\""},
      {"<Other Version='1' x:Version='2'/>", "Version=\"1\""},
      {"<Shipment><Goods id='7'><Number>1</Number><Mark>a</Mark><Mark><Sign>b</Sign></Mark>"
       "</Goods><Goods><Number>2</Number></Goods></Shipment><Kind>k</Kind>",
       "Kind=\"k\" Goods{Number=\"1\" Id=\"7\" Mark{Text=\"a\"}{Sign=\"b\"}}{Number=\"2\"}"},
      // Which alternative was chosen is marked in front of it.
      {"<Chosen>a</Chosen>", "WAY_CHOICE=\"2\" Chosen=\"a\""},
      {"<Chosen/>", ""},
      // By type.
      {"<Since>2015-06-11</Since><Cost>1,2,3</Cost>", "Since=\"11.06.2015\" Cost=\"1.2.3\""},
      {"<Since>2015-06-11T10</Since>", "Since=\"2015-06-11T10\""},
      {"<Since>\r\n\t2015-06-11\r\n</Since>", "Since=\"11.06.2015\""},
      // Repetitions are joined unconverted where the field says how, else the first one stays.
      {"<Line>1</Line><Line>2,5&amp;</Line><List>1</List><List/><List>3</List>",
       "Lines=\"1\r2,5&\" List=\"1,,3\""},
      {"<Kind>1</Kind><Kind>2</Kind>", "Kind=\"1\""},
      // Elements, comments behind the first and texts end them; these go to "Bare", without a path.
      {"<Line>1</Line><Kind>a</Kind><Line>2</Line>", "Kind=\"a\" Lines=\"2\""},
      {"<!-- --><Line>1</Line><!-- --><Line>2</Line>", "Lines=\"2\""},
      {"<Line>1</Line>stray<Line>2</Line>", "Bare=\"stray\" Lines=\"2\""}};
  for (const auto& [content, fields] : cases) {
    World world;
    TXMLContainer container = world.Open(Declaration(content));
    EXPECT_EQ(DumpAll(container), "ESADout 1: " + std::string(fields) + "\n") << content;
    EXPECT_FALSE(container.UnknownIdsFound());
  }
}

TEST(TXMLContainer, NoticesValuesUnderUnknownNames) {
  const std::pair<const char*, bool> cases[] = {
      {"<Shipment><Goods><Kind>a</Kind></Goods></Shipment>", true},
      {"<Group>a</Group>", true},
      {"<Other/><Other></Other><Other><![CDATA[]]></Other>", false},
      {"<Other>a<x/></Other>", false}};
  for (const auto& [content, found] : cases) {
    World world;
    TXMLContainer container = world.Open(Declaration(content));
    EXPECT_NE(container.Next(), nullptr);
    EXPECT_EQ(container.UnknownIdsFound(), found) << content;
  }
}

TEST(TXMLContainer, PacksBinaryContent) {
  constexpr std::size_t kSize = 300000;
  std::string encoded;
  for (std::size_t i = 0; i < kSize / 3; ++i) encoded += "TWFu\n";
  World world;
  const std::string packed =
      world.Open(Declaration("<Scan>" + encoded + "</Scan>")).Next()->GetField("Scan");
  std::string unpacked(kSize + 1, '\0');
  uLongf size = unpacked.size();
  ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(unpacked.data()), &size,
                       reinterpret_cast<const Bytef*>(packed.data()), packed.size()),
            Z_OK);
  EXPECT_EQ(size, kSize);
  EXPECT_EQ(unpacked.substr(kSize - 6, 6), "ManMan");
}

TEST(TXMLContainer, NamesWhatItCannotRead) {
  World world;
  TXMLContainer container = world.Open(Envelope("<ESADout x=''><Kind>"));
  const auto next = [&] { static_cast<void>(container.Next()); };
  EXPECT_EQ(Utf8(ErrorOf(next)), "Отсутствует окончание документа: </ESADout>");
  EXPECT_EQ(container.Next(), nullptr);
  TXMLContainer damaged = world.Open(Declaration("<Kind x>"));
  EXPECT_EQ(ErrorOf([&] { static_cast<void>(damaged.Next()); }),
            "= expected:<ESADout x=\"\"><Kind x></ESADout>");
  EXPECT_EQ(Utf8(ErrorOf([&] { world.Open("<a>\xD0</a>"); })),
            std::string(kFile) + "\rОшибка при перекодировке из UTF-8 - битый файл! " + kFile);
}

TEST(TXMLContainer, ReadsAChangedFileAgain) {
  const std::string old_text = Declaration("<Kind>1</Kind>") + Declaration("<Kind>2</Kind>");
  World world;
  TXMLContainer container = world.Open(old_text);
  EXPECT_EQ(container.Next()->GetField("Kind"), "1");
  world.Put(Declaration("<Kind>longer</Kind>") + Declaration("<Kind>changed</Kind>"));
  EXPECT_EQ(container.Next()->GetField("Kind"), "changed");
  TXMLContainer emptied = world.Open(old_text);
  world.Put("");
  EXPECT_EQ(Utf8(ErrorOf([&] { static_cast<void>(emptied.Next()); })),
            std::string("Пустой файл: ") + kFile);
}

// The next two would take minutes if finding or filling were anything but linear.
TEST(TXMLContainer, GoesThroughManySmallDocuments) {
  constexpr int kDocuments = 20000;
  std::string xml;
  for (int i = 0; i < kDocuments; ++i) {
    xml += Envelope("<Inventory a=''><Number>1</Number></Inventory>") + Envelope("<ESADout_CU a>");
  }
  World world;
  TXMLContainer container = world.Open(xml);
  int count = 0;
  for (; const auto document = container.Next(); ++count) {
    EXPECT_EQ(document->GetField("Number"), count < kDocuments ? "1" : "");
  }
  EXPECT_EQ(count, 2 * kDocuments);
}

TEST(TXMLContainer, FillsWhateverIsNestedOrWide) {
  constexpr int kMany = 100000;
  std::string deep, end, wide = "<Other", repeated;
  for (int i = 0; i < kMany; ++i) {
    deep += "<Transport>";
    end += "</Transport>";
    wide += " a" + std::to_string(i) + "=\"1\"";
    repeated += "<Line>line</Line>";
  }
  World world;
  const auto document =
      world.Open(Declaration(deep + end + wide + " Version=\"v\"/>" + repeated)).Next();
  EXPECT_EQ(document->GetField("Version"), "v");
  document->FlattenLongText = false;
  EXPECT_EQ(document->GetField("Lines").size(), std::size_t{5} * kMany - 1);
}

std::string Loaded(std::string_view bytes) {
  FakeHost host;
  host.files["A.XML"] = bytes;
  return Utf8(LoadXmlText(host.files, "A.XML"));
}

std::string Utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (const char c : ascii) bytes.append(1, c).append(1, '\0');
  return bytes;
}

TEST(XmlText, TheHeadOfTheFileDecidesItsEncoding) {
  const std::string bom = "\xEF\xBB\xBF", win = Win("Я"), late(82, ' '), last(81, ' ');
  const std::string declared = "<?xml e=\"windows-1251\"?>", utf16 = "<?xml e=\"UTF-16\"?>";
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"nothing declared", "<a>Я№\xE2\x82\xBF</a>", "<a>Я№?</a>"},
      {"1251 declared", declared + win, declared + "Я"},
      {"blanks and single quotes", "<?xml e = 'windows-1251'?>" + win, declared + "Я"},
      {"a mark wins over the declaration", bom + declared + "Я", declared + "Я"},
      {"text behind the mark", bom + "x '<a b = 'c'/>", "<a b = 'c'/>"},
      {"declared too late", late + "<a n=\"windows-1251\"/>", "<a n=\"windows-1251\"/>"},
      {"declared last", last + "<a n=\"windows-1251\"/>" + win, "<a n=\"windows-1251\"/>Я"},
      {"near once normalised", last + "<a n = \"windows-1251\"/>", "<a n=\"windows-1251\"/>"},
      {"UTF-16", Utf16(utf16) + "\x2F\x04\x16\x21", utf16 + "Я№"},
      {"no element", " x ", " x "},
      {"an empty file", "", ""}};
  for (const auto& [what, bytes, text] : cases) EXPECT_EQ(Loaded(bytes), text) << what;
}

TEST(XmlText, KnowsOneSchemaPrefixAndDropsTheFirstComment) {
  for (const auto& [bytes, text] : Cases(
           {"<xs:a t=\"xs:b\">xs xxs:</xs:a> -> <xsd:a t=\"xsd:b\">xs xxsd:</xsd:a>",
            "<?xml?><!-- one --><a/><!-- two --> -> <?xml?><a/><!-- two -->",
            "<!--><b/> --><a/> -> <b/> --><a/>", "<a>--><!-- one --></a> -> <a>--><!-- one --></a>",
            "<a><!-- open -> <a><!-- open", "!--<a>!--<!--!----> -> <a>!--"})) {
    EXPECT_EQ(Loaded(bytes), text);
  }
}

TEST(XmlText, ABrokenFileIsNamed) {
  const std::string message = Win("A.XML\rОшибка при перекодировке из UTF-8 - битый файл!");
  for (const char* bytes : {"<a>\xC3</a>", "\xEF\xBB", "\xEF\xBB\xBFno root", "<a>\xFF\xFE"}) {
    EXPECT_EQ(ErrorOf([&] { (void)Loaded(bytes); }), message) << bytes;
  }
}

TEST(Base64DecodeInPlace, DecodesInPlaceAndRefusesMisplacedPadding) {
  // The text goes on behind a padded group; an unfinished last group gives nothing.
  const auto well_formed =
      Cases({" -> ", "TWFu\r\nTWE= -> ManMa", "T\tW F-u -> Man", "TQ= \r\n=TWFu -> MMan",
             "+/+/ -> \xFB\xFF\xBF", "TWFuTWE -> Man"});
  const auto misplaced = Cases({"= -> =", "TWFu=TWFu -> Man=TWFu", "T= -> =", "TWFuTQ= -> Man",
                                "TWFuTQ=T -> ManT", "TWE== -> Ma="});
  for (const auto& cases : {well_formed, misplaced}) {
    for (auto [text, bytes] : cases) {
      EXPECT_EQ(Base64DecodeInPlace(text), cases == well_formed) << bytes;
      EXPECT_EQ(text, bytes);
    }
  }
}

TEST(GetXmlValue, FindsAValueByItsPath) {
  for (const auto& [query, value] : Cases(
           {"N\\Code in <r><Code>1</Code><N><Code>2</Code></N></r> -> 2",
            " N \\ Code  in <N><ns:Code>2</ns:Code></N> -> 2",
            "N\\Code in <n><cODE>abвг</Code></N> -> ABВГ", "A\\B\\C in <A><B><C>1</C></B></A> -> 1",
            "N\\Code in <N><x/></N><N><Code>2</Code></N> -> 2",
            "N\\Code in <N xmlns='u'><Code>2</Code></N> -> 2",
            "N\\Code in <N a='u'><Code>2</Code></N> -> ", "N\\Code in <N><Code>2</Code> -> 2",
            "N\\Code in <Nx><Code>1</Code></Nx><N><Code>2</Code></N> -> ",
            "N\\Code in <a:N><Code>2</Code></a:N> -> ", "N\\N in <N><C>1</C><N>2</N></N> -> 2",
            "N in <N>1</N><N>2</N> -> 2", "Code in <r><Code>1<x>2</x></Code></r> -> 1<X>2",
            "Code in <r><Code>1 -> ", "D in <r><D>2015/06.11</D></r> -> 11.06.2015",
            "D in <r><D>\r\n 2015-06-11\r\n</D></r> -> 11.06.2015", "\\D in <r><D>1</D></r> -> 1",
            "N\\ in <N><D>1</D></N> -> ", " in <N></N> -> "})) {
    const std::size_t in = query.find(" in ");
    EXPECT_EQ(Utf8(GetXmlValue(Win(query.substr(in + 4)), query.substr(0, in))), value) << query;
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
