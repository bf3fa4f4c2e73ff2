#include "xml/xml_container.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <optional>
#include <string>

#include "support/catalogue_builder.h"
#include "support/document_dump.h"

namespace customsconv {
namespace {

constexpr const char* kFile = "C:\\IN\\decl.xml";

constexpr const char* kCatalogue =
    "[ESADout.HEADER]\n"
    "ShortName=ЭД ДТ\n"
    "XmlType=ESADout\n"
    "Prefix=<ESADout xmlns:cat=\"u\">\n"
    "[ESADout.Fields]\n"
    "Kind=C10 | NAMESPACE=\"cat:Kind\"\n"
    "Bare=C10\n"
    "Mode=C10 | NAMESPACE=\"Transport#cat:Border#Mode\"\n"
    "Since=D | NAMESPACE=\"Since\"\n"
    "Cost=N15.2 | NAMESPACE=\"Cost\"\n"
    "Lines=C250 | NAMESPACE=\"Line\" SEQ=\"1\"\n"
    "List=C250 | NAMESPACE=\"List\" SEQ=\"2\"\n"
    "Chosen=C10 | NAMESPACE=\"Chosen\" CHOICE=\"2\"\n"
    "Group=B | NAMESPACE=\"Group\"\n"
    "InGroup=C10 | NAMESPACE=\"Group#Inside\"\n"
    "Scan=Y | NAMESPACE=\"Scan\"\n"
    "Version=C10 | NAMESPACE=\"att=Version\"\n"
    "Goods { NAMESPACE=\"Shipment#Goods\"\n"
    "  Number=C10 | NAMESPACE=\"Number\"\n"
    "  Id=C10 | NAMESPACE=\"att=id\"\n"
    "  Mark { NAMESPACE=\"cat:Mark\"\n"
    "    Text=C10\n"
    "    Sign=C10 | NAMESPACE=\"Sign\"\n"
    "  }\n"
    "}\n"
    "[Inventory.HEADER]\n"
    "ShortName=Inventory\n"
    "XmlType=Inventory\n"
    "Prefix=<Inventory xmlns=\"u\">\n"
    "[Inventory.Fields]\n"
    "Number=C10 | NAMESPACE=\"Number\"\n";

// A program folder and one XML file. Texts are UTF-8.
class World {
 public:
  World() {
    program_.Dcf(kCatalogue);
    types_.emplace("Kordwin.dcf", /*all_files=*/false, program_);
  }

  TXMLContainer Open(std::string_view xml) {
    Put(xml);
    return TXMLContainer(kFile, *types_, program_);
  }
  void Put(std::string_view xml) { program_.host.files[kFile] = xml; }
  FakeFiles& files() { return program_.host.files; }

 private:
  CatalogueWorld program_;
  std::optional<TDocTypeList> types_;
};

std::string Declaration(std::string_view content) {
  return "<?xml version=\"1.0\"?><ESADout x=\"\">" + std::string(content) + "</ESADout>";
}

std::string Envelope(std::string_view document) {
  return "<DocBody>" + std::string(document) + "</DocBody>";
}

// What the container yields, a document a line: "code occurrence: fields".
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
  const std::string esad = "<ESADout x=\"\"><Kind>", inventory = "<Inventory a='b'><Number>";
  const std::string esad_end = "</Kind></ESADout>", inventory_end = "</Number></Inventory>\r\n";
  const std::string first = esad + "1" + esad_end, second = inventory + "2" + inventory_end;
  const std::string third = esad + "3" + esad_end;
  const struct {
    const char* what;
    std::string xml;
    const char* documents;
  } cases[] = {
      {"one declaration", "<?xml version=\"1.0\"?>\n" + first, "ESADout 1: Kind=\"1\"\n"},
      {"envelopes",
       "<?xml version=\"1.0\"?><r>" + Envelope(first) + Envelope("\n" + second) + Envelope(third),
       "ESADout 1: Kind=\"1\"\nESADout 2: Kind=\"3\"\nInventory 1: Number=\"2\"\n"},
      {"a declaration each", "<?xml version=\"1.0\"?>" + second + "<?xml version=\"1.0\"?>" + first,
       "Inventory 1: Number=\"2\"\nESADout 1: Kind=\"1\"\n"},
      {"names that differ in letter case count as one",
       Envelope(first) + Envelope("<esadOUT >") + first,
       "ESADout 1: Kind=\"1\"\nESADout 2: Kind=\"1\"\n"},
      {"unknown kinds are passed", Envelope("<Other a='b'/>") + Envelope(second),
       "Inventory 1: Number=\"2\"\n"},
      {"customs union names lead to the plain type", Envelope("<ESADout_CUv2 a='b'>") + first,
       "ESADout 1: Kind=\"1\"\n"},
      {"two names of one type are two kinds",
       Envelope("<ESADout_CU a=''>") + Envelope(first) + Envelope("<Inventory_CU b=''>") + second,
       "ESADout 1: Kind=\"1\"\nESADout 1: Kind=\"1\"\nInventory 1: Number=\"2\"\n"},
      {"a root without attributes is not found", Envelope("<ESADout><Kind>1</Kind></ESADout>"),
       "ESADout 1: \n"},
      {"a line break belongs to the name", Envelope("<ESADout\nx='y'><Kind>1</Kind></ESADout>"),
       ""},
      {"neither envelope nor declaration", first, ""},
      {"nothing behind the envelope", "<DocBody>", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    World world;
    TXMLContainer container = world.Open(c.xml);
    EXPECT_EQ(DumpAll(container), c.documents);
    EXPECT_EQ(container.Next(), nullptr);
  }
}

TEST(TXMLContainer, ListsKindsWithTheirCounts) {
  World world;
  TXMLContainer container =
      world.Open(Envelope("<Inventory >") + Envelope("<ESADout_CU >") + Envelope("<Inventory >"));
  ASSERT_EQ(container.DocList().size(), 2u);
  EXPECT_EQ(container.DocList()[0].text, "Inventory (2)");
  EXPECT_EQ(container.DocList()[1].text, Win("ДТ (1)"));
  const struct {
    const char* text;
    int count;
  } cases[] = {{"A (12)", 12}, {"A (B) (12)", 1}, {"(12)", 1}, {"", 1}};
  for (const auto& c : cases) EXPECT_EQ((TXMLContainer::Kind{c.text, 0}.Count()), c.count);
}

TEST(TXMLContainer, FillsFieldsByTheirXmlPaths) {
  const struct {
    const char* what;
    const char* content;
    const char* fields;
  } cases[] = {
      {"prefix and letter case do not matter", "<x:KIND>a</x:KIND>", "Kind=\"a\""},
      {"entities", "<Kind>&amp;lt;&#192;&quot;</Kind>", "Kind=\"<А\"\""},
      {"CDATA", "<Kind><![CDATA[a]]></Kind>", "Kind=\"a\""},
      {"names join over elements that are no fields",
       "<a:Transport><Border><Mode>a</Mode><x/></Border></a:Transport>", "Mode=\"a\""},
      {"a repeated element joins where the field says how",
       "<Line>1</Line><Line>2,5&amp;</Line><List>1</List><List/><List>3</List>",
       "Lines=\"1\r2,5&\" List=\"1,,3\""},
      {"else the first one stays", "<Kind>1</Kind><Kind>2</Kind>", "Kind=\"1\""},
      {"another element ends the repetition", "<Line>1</Line><Kind>a</Kind><Line>2</Line>",
       "Kind=\"a\" Lines=\"2\""},
      {"so does a comment (the file's first one is not there any more)",
       "<!-- --><Line>1</Line><!-- --><Line>2</Line>", "Lines=\"2\""},
      {"and a text, which goes to the first field without a path",
       "<Line>1</Line>stray<Line>2</Line>", "Bare=\"stray\" Lines=\"2\""},
      {"dates", "<Since>2015-06-11</Since><Cost>1,234,5</Cost><Shipment><Goods/></Shipment>",
       "Since=\"11.06.2015\" Cost=\"1.234.5\" Goods{}"},
      {"what is no date", "<Since>2015-13-45</Since>", "Since=\"2015-13-45\""},
      {"a date with a time", "<Since>2015-06-11T10</Since>", "Since=\"2015-06-11T10\""},
      {"a repeated date is not looked at", "<Since>2015/06/11</Since><Since>2015-06-11</Since>",
       "Since=\"2015/06/11\""},
      {"an element of type B is passed through", "<Group><Inside>a</Inside></Group>",
       "InGroup=\"a\""},
      {"blocks, their attributes and their text",
       "<Shipment><Goods id='7'><Number>1</Number><Mark>a</Mark><Mark><Sign>b</Sign></Mark>"
       "</Goods><Goods><Number>2</Number></Goods></Shipment><Kind>k</Kind>",
       "Kind=\"k\" Goods{Number=\"1\" Id=\"7\" Mark{Text=\"a\"}{Sign=\"b\"}}{Number=\"2\"}"},
      {"attributes of a group belong to the level that is open",
       "<Other Version='1' x:Version='2'/>", "Version=\"1\""},
      {"attributes of a field are not looked at", "<Kind Version='1'>a</Kind>", "Kind=\"a\""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    World world;
    TXMLContainer container = world.Open(Declaration(c.content));
    EXPECT_EQ(DumpAll(container), std::string("ESADout 1: ") + c.fields + "\n");
    EXPECT_FALSE(container.UnknownIdsFound());
  }
}

TEST(TXMLContainer, NoticesValuesUnderUnknownNames) {
  const struct {
    const char* content;
    bool found;
  } cases[] = {
      {"<Other>a</Other>", true},
      {"<Transport><Border><Other>a</Other></Border></Transport>", true},
      {"<Shipment><Goods><Kind>a</Kind></Goods></Shipment>", true},
      {"<Group>a</Group>", true},
      {"<Other/><Other></Other><Other><![CDATA[]]></Other>", false},
      {"<Other>a<x/></Other>", false},
      {"stray text", false},
  };
  for (const auto& c : cases) {
    World world;
    TXMLContainer container = world.Open(Declaration(c.content));
    ASSERT_NE(container.Next(), nullptr);
    EXPECT_EQ(container.UnknownIdsFound(), c.found) << c.content;
    container.ClearUnknownIds();
    EXPECT_FALSE(container.UnknownIdsFound());
  }
}

TEST(TXMLContainer, MarksWhichAlternativeWasChosen) {
  World world;
  TXMLContainer container = world.Open(Declaration("<Chosen>a</Chosen>"));
  const auto document = container.Next();
  document->SetField("Chosen", "a");
  const std::string unmarked = Dump(document->RootRecord());
  document->SetChoice(document->CurBasis().IndexOfName("Chosen"), 2);
  const std::string marked = Dump(document->RootRecord());
  TXMLContainer again = world.Open(Declaration("<Chosen>a</Chosen>"));
  EXPECT_EQ(DumpAll(again), "ESADout 1: " + marked + "\n");
  TXMLContainer empty = world.Open(Declaration("<Chosen/>"));
  EXPECT_EQ(DumpAll(empty), "ESADout 1: \n");
}

TEST(TXMLContainer, PacksBinaryContent) {
  constexpr std::size_t kSize = 3000000;
  std::string encoded;
  for (std::size_t i = 0; i < kSize / 3; ++i) encoded += i % 20 == 19 ? "TWFu\n" : "TWFu";
  World world;
  TXMLContainer container = world.Open(Declaration("<Scan>" + encoded + "</Scan>"));
  const auto document = container.Next();
  const std::string packed = document->GetField("Scan");
  std::string unpacked(kSize + 1, '\0');
  uLongf size = unpacked.size();
  ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(unpacked.data()), &size,
                       reinterpret_cast<const Bytef*>(packed.data()), packed.size()),
            Z_OK);
  ASSERT_EQ(size, kSize);
  EXPECT_EQ(unpacked.substr(kSize - 6, 6), "ManMan");
}

TEST(TXMLContainer, RefusesWhatItCannotRead) {
  const struct {
    const char* what;
    std::string xml;
    std::string message;
  } cases[] = {
      {"no end tag", "<?xml version=\"1.0\"?><ESADout x=''><Kind>",
       "Отсутствует окончание документа: </ESADout>"},
      {"damaged", Declaration("<Kind x>"), "= expected:<ESADout x=\"\"><Kind x></ESADout>"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    World world;
    TXMLContainer container = world.Open(c.xml);
    EXPECT_EQ(Utf8(ErrorOf([&] { static_cast<void>(container.Next()); })), c.message);
    EXPECT_EQ(container.Next(), nullptr);
  }
}

TEST(TXMLContainer, NamesTheFileThatCannotBeRead) {
  World world;
  const std::string damaged = ErrorOf([&] { world.Open("<a>\xD0</a>"); });
  EXPECT_EQ(Utf8(damaged),
            std::string(kFile) + "\rОшибка при перекодировке из UTF-8 - битый файл! " + kFile);
  world.Put("");
  world.files().FailPath(kFile, FileOp::kRead, FileError::Kind::kOpen);
  const std::string refused = ErrorOf([&] { world.Open(""); });
  EXPECT_TRUE(refused.ends_with(std::string(" ") + kFile)) << Utf8(refused);
}

TEST(TXMLContainer, ReadsAChangedFileAgain) {
  World world;
  const auto two = [](std::string_view a, std::string_view b) {
    return Declaration("<Kind>" + std::string(a) + "</Kind>") +
           Declaration("<Kind>" + std::string(b) + "</Kind>");
  };
  TXMLContainer container = world.Open(two("1", "2"));
  EXPECT_EQ(container.Next()->GetField("Kind"), "1");
  world.Put(two("longer", "changed"));
  EXPECT_EQ(container.Next()->GetField("Kind"), "changed");

  TXMLContainer emptied = world.Open(two("1", "2"));
  world.Put("");
  EXPECT_EQ(Utf8(ErrorOf([&] { static_cast<void>(emptied.Next()); })),
            std::string("Пустой файл: ") + kFile);
}

// The next two would take minutes if finding or filling were anything but linear.
TEST(TXMLContainer, GoesThroughManySmallDocuments) {
  constexpr int kDocuments = 20000;
  std::string xml;
  for (int i = 0; i < kDocuments; ++i) {
    xml += Envelope("<Inventory a=''><Number>1</Number></Inventory>");
    xml += Envelope("<ESADout_CU a=''>");
  }
  World world;
  TXMLContainer container = world.Open(xml);
  int filled = 0;
  int empty = 0;
  while (const auto document = container.Next()) {
    ++(document->GetField("Number") == "1" ? filled : empty);
  }
  EXPECT_EQ(filled, kDocuments);
  EXPECT_EQ(empty, kDocuments);
}

TEST(TXMLContainer, FillsWhateverIsNestedOrWide) {
  constexpr int kMany = 100000;
  std::string deep, wide = "<Other", repeated;
  for (int i = 0; i < kMany; ++i) deep += "<Transport>";
  deep += "<Kind>lost</Kind>";
  for (int i = 0; i < kMany; ++i) deep += "</Transport>";
  for (int i = 0; i < kMany; ++i) wide += " a" + std::to_string(i) + "='1'";
  for (int i = 0; i < kMany; ++i) repeated += "<Line>line</Line>";
  World world;
  TXMLContainer container =
      world.Open(Declaration(deep + wide + " Version='v'/>" + repeated + "<Kind>found</Kind>"));
  const auto document = container.Next();
  EXPECT_EQ(document->GetField("Kind"), "found");
  EXPECT_EQ(document->GetField("Version"), "v");
  document->FlattenLongText = false;
  EXPECT_EQ(document->GetField("Lines").size(), std::size_t{5} * kMany - 1);
}

}  // namespace
}  // namespace customsconv
