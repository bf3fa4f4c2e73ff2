// The examples: declarations and what becomes of them (examples/xml), and an album of formats
// (examples/album): drafts of its types carry every document that its schemas allow.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <vector>

#include "catalogue/doc_type_list.h"
#include "document_generator.h"
#include "entry/library.h"
#include "platform/posix/posix_files.h"
#include "support/catalogue_builder.h"
#include "support/temp_folder.h"
#include "text/words.h"
#include "validation/formats/type_draft.h"
#include "validation/libxml_parse.h"
#include "validation/libxml_services.h"
#include "xml/read/xml_container.h"
#include "xml/tree/xml_parser.h"
#include "xml/write/document_writer.h"

namespace customsconv {
namespace {

namespace fs = std::filesystem;

const fs::path kSources = CUSTOMSCONV_SOURCE_DIR;

// In the order of examples/README.md: the component list of the first file joins the first
// declaration of the set.
constexpr std::string_view kFiles =
    "10702020_010615_0000100|10702020_110615_0001234|DT_10702020201506110001235|"
    "Копия 10702020_150615_0001236|X_10702020_180615_0001237|dts|inventory|kdt|card|transit|"
    "descriptions";

// A copy of examples/ on the disk with an empty table set, on 3 July 2015.
class ExamplesTest : public testing::Test {
 protected:
  ExamplesTest() {
    fs::copy(kSources / "examples", folder_.path(), fs::copy_options::recursive);
    clock_.Set({2015, 7, 3}, 12);
    std::map<std::string, TableImage> tables;  // put together without the table engine
    std::istringstream lines(folder_.Read("armti/tables.txt"));
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line);
      std::string table, field;
      char type = ' ';
      int width = 0, decimals = 0;
      if (!(words >> table >> field >> type >> width) || table.front() == ';') continue;
      words >> decimals;
      tables[table].Field(field, type, width, decimals);
    }
    for (const auto& [name, image] : tables) folder_.Write("out/" + name + ".DBF", image.Bytes());
  }

  TempFolder folder_;
  posix::PosixFiles files_;
  FakeClock clock_;
  ScriptedDialogs dialogs_;
  FakeProcesses processes_;
  Host host_{files_, clock_, dialogs_, processes_};
  LibXmlServices services_{files_};
  Library library_{host_, services_};
};

TEST_F(ExamplesTest, EveryCellIsAsExpected) {
  const auto path = [this](const std::string& name) { return ShortText::Cut(folder_.Win(name)); };
  for (const std::string_view name : Words(kFiles, "|")) {
    const ShortText file = path("xml/" + std::string(name) + ".xml");
    EXPECT_TRUE(library_.Xml2ArmTi(path("program/"), path("rules/armti.txt"), file, path("out/")))
        << name << ": " << Utf8(library_.quiet_failure());
  }
  EXPECT_EQ(dialogs_.messages, std::vector<std::string>());
  EXPECT_EQ(dialogs_.exceptions, std::vector<std::string>());
  const std::vector<fs::path> tables(fs::directory_iterator(folder_ / "out"), {});
  EXPECT_EQ(tables.size(), 36U);
  for (const fs::path& table : tables) {
    const fs::path expected = kSources / "tests/entry/expected" / table.stem();
    EXPECT_EQ(TableDump(FileBytes(table)), FileBytes(expected.string() + ".txt")) << table;
  }
}

// Roots of the album whose documents are converted.
constexpr const char* kRoots[] = {"ESADout_CU",         "DTSout_CU",           "DTSout",
                                  "KTSout_CU",          "KDTout_CU",           "Inventory",
                                  "GoodsComponentList", "TransportMeanCardOut"};

// The one element of the album that is required although all inside may be empty and one of
// several must stand in it: what has no text at all is not written back.
constexpr const char* kEmptyOwner =
    "Element 'TransportOwner': Missing child element(s). Expected is one of ( OwnerModeCode, "
    "TransportOwnerPerson, TransportOwnerOrganization ).";

// Texts of elements with their paths, one a line.
std::string Leaves(const TXMLNode& node, const std::string& path = "") {
  std::string leaves = node.Text().empty() ? "" : path + " = " + Utf8(node.Text()) + "\n";
  for (const TXMLNode& child : node.children) {
    if (child.type != NodeType::kElement) continue;
    leaves += Leaves(child, path + "/" + std::string(child.LocalName()));
  }
  return leaves;
}

class AlbumTest : public testing::Test {
 protected:
  AlbumTest() {
    for (const auto& entry : fs::directory_iterator(kSources / "examples/album")) {
      if (entry.path().extension() != ".xsd") continue;
      files_["C:\\ALBUM\\" + entry.path().filename().string()] = FileBytes(entry.path());
    }
    std::string drafts;
    for (const std::string root : kRoots) {
      schema::SchemaSet schemas(files_, SchemaFile(root));
      drafts += DraftType(schemas, {});
    }
    files_["C:\\PROG\\Data\\Kordwin.dcf"] = drafts;
    world_.DosDcf("[OLD.HEADER]\nFullName=x\n");
    types_ = std::make_unique<TDocTypeList>("C:\\PROG\\Data\\Kordwin.dcf", true, world_);
  }

  static std::string SchemaFile(const std::string& root) { return "C:\\ALBUM\\" + root + ".xsd"; }

  // Why the text (code page 1251) is not valid against the root's schema; empty when it is.
  std::string Fault(const std::string& root, std::string_view text) {
    const XmlParseReport report = ParseXml(text, services_.Compiled(SchemaFile(root)).get());
    return report.error_code == 0 ? "" : Utf8(report.reason);
  }

  // Fills the only document of a file from its text (UTF-8), and writes it back.
  std::string ThereAndBack(const std::string& xml) {
    files_["C:\\IN\\document.xml"] = xml;
    TXMLContainer container("C:\\IN\\document.xml", *types_, world_);
    const std::unique_ptr<TDocument> document = container.Next();
    if (document == nullptr) return "no document";
    EXPECT_FALSE(container.UnknownIdsFound());
    return Win(DocumentWriter().Text(*document));
  }

  CatalogueWorld world_;
  FakeFiles& files_ = world_.host.files;
  std::unique_ptr<TDocTypeList> types_;
  LibXmlServices services_{files_};
};

// Full documents show every element and every branch of each choice, lean ones what is left when
// nothing optional stands; mixed ones leave out this and that.
TEST_F(AlbumTest, DraftsCarryEveryDocumentThereAndBack) {
  constexpr unsigned kMixtures = 20;
  constexpr unsigned kBranches = 5;  // no choice of the album has more
  for (const std::string root : kRoots) {
    EXPECT_GE(types_->GetDocInfo(root).GetBasis(world_).Count(), 10) << root;
    schema::SchemaSet schemas(files_, SchemaFile(root));
    for (const Fullness fullness : {Fullness::kFull, Fullness::kLean, Fullness::kMixed}) {
      for (unsigned i = 0; i < (fullness == Fullness::kMixed ? kMixtures : kBranches); ++i) {
        SCOPED_TRACE(testing::Message() << root << ", fullness " << int(fullness) << ", " << i);
        const std::string xml = DocumentGenerator(fullness, i).Document(schemas.Root(root));
        ASSERT_EQ(Fault(root, Win(xml)), "");
        const std::string written = ThereAndBack(xml);
        const std::string leaves = Leaves(XmlTree(written).root());
        EXPECT_EQ(leaves, Leaves(XmlTree(Win(xml)).root()));
        const bool empty_owner = root == std::string("TransportMeanCardOut") &&
                                 leaves.find("/TransportOwner/") == std::string::npos;
        EXPECT_EQ(Fault(root, written), empty_owner ? kEmptyOwner : "");
      }
    }
  }
  EXPECT_EQ(world_.host.dialogs.log, std::vector<std::string>());
}

}  // namespace
}  // namespace customsconv
