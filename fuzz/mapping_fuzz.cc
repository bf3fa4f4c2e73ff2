// Takes any bytes as a rules file and a document, separated by a line "====", through a whole
// conversion. The tables stay readable, and are the same when somebody watches the lines.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "entry/library.h"
#include "support/environment_builder.h"
#include "support/table_image.h"
#include "validation/libxml_services.h"

namespace customsconv {
namespace {

// Names that the built-in rules know, few enough to be hit by chance.
constexpr const char* kCatalogue =
    "[ESADout.HEADER]\nShortName=DT\nXmlType=x\nMainBlock=ESADoutGoods\nPrefix=<ESADout a=\"\">\n"
    "[ESADout.Fields]\nCustomsProcedure=C2 | NAMESPACE=\"P\"\nDate=D | NAMESPACE=\"D\"\n"
    "Flag=L | [Нет/Да] NAMESPACE=\"F\"\nText=40X9 | NAMESPACE=\"T\"\n"
    "ESADoutDeclarant#Name=C9 | NAMESPACE=\"N\"\nESADoutCarrier#Name=C9 | NAMESPACE=\"C\"\n"
    "ESADoutPrincipal#ESADPrincipalRepresentative { NAMESPACE=\"R\"\n  Name=C9 | "
    "NAMESPACE=\"N\"\n}\n"
    "ESADoutGoodsLocation { NAMESPACE=\"L\"\n  Transport#TransporIdentifier=C99 | "
    "NAMESPACE=\"I\"\n}\n"
    "ESADoutCarrier#ESADDriverInformation { NAMESPACE=\"V\"\n  PersonPost=C9 | NAMESPACE=\"P\"\n}\n"
    "ESADoutCustomsConditions#ProcessingGoods { NAMESPACE=\"Q\"\n"
    "  GoodsNumeric=C5 | NAMESPACE=\"N\"\n"
    "  WasteProducts { NAMESPACE=\"W\"\n    GoodsNumeric=C5 | NAMESPACE=\"N\"\n  }\n}\n"
    "ESADoutGoods { NAMESPACE=\"G\"\n  GoodsNumeric=C5 | NAMESPACE=\"N\"\n"
    "  Description { NAMESPACE=\"D\"\n    Text=C250 | NAMESPACE=\"T\"\n  }\n"
    "  outPresentedDocument#StoreTransferDoc#TransferImportCode=C9 | NAMESPACE=\"S\"\n"
    "  outPresentedDocument#X { NAMESPACE=\"X\"\n    Number=C9 | NAMESPACE=\"N\"\n  }\n"
    "  GoodsGroupDescription { NAMESPACE=\"O\"\n    GoodsDescription { NAMESPACE=\"D\"\n"
    "      Text=C250 | NAMESPACE=\"T\"\n    }\n    GoodsGroupInformation { NAMESPACE=\"I\"\n"
    "      SerialNumber=C250 | NAMESPACE=\"S\"\n    }\n  }\n}\n"
    "[TD.HEADER]\nShortName=TD 1\nMainBlock=TOVAR\nDbfName=DBRHEAD.DBF\n[TD.Files]\n"
    "HEAD = DBRHEAD.DBF [G073]\n  TRANS = TRANS.DBF [G073]\n  DCLLISTL = LISTL.DBF [G073]\n"
    "  KMPK = KMPK.DBF [G073]\n  TOVAR = TOVAR.DBF [G073;G32]\n    TECHD = TECHD.DBF [G073;G32]\n"
    "    DINFO = DINFO.DBF [G073;G32]\n    SER = SER.DBF [G073;G32]\n    GU = GU.DBF [G073;G32]\n";

constexpr const char* kTables[] = {"DBRHEAD", "TRANS", "LISTL", "KMPK", "TOVAR",
                                   "TECHD",   "DINFO", "SER",   "GU"};

// One table for all roles: every field that a rule may look for.
std::string Table() {
  TableImage table;
  table.Field("G073", 'C', 7).Field("G32", 'N', 5).Field("G071", 'C', 8).Field("G072", 'D', 8);
  table.Field("G19", 'L', 1).Field("G31_1", 'C', 20).Field("TEXT1", 'C', 30).Field("G30", 'C', 9);
  for (const char* name : {"G36", "PASP", "NGR", "NTRANS", "G444", "G31_15_SN", "GU03", "P"}) {
    table.Field(name, 'C', 25);
  }
  return table.Bytes();
}

class LineWatcher : public ConversionObserver {
 public:
  void DocumentDone() override {}
  void Record(std::string_view) override {}
  [[nodiscard]] bool WantsLines() const override { return true; }
  void Line(const LineReport&) override {}
};

// All tables after one conversion.
std::string Converted(std::string_view rules, std::string_view xml, FileAccount* account) {
  constexpr char kXmlFile[] = "C:\\IN\\10702020_110615_0001234.xml";
  FakeHost host;
  host.files["C:\\PROG\\kord.ini"] = "";
  host.files["C:\\PROG\\DOCUMENT.INI"] = "";
  host.files["C:\\PROG\\document.dcf"] = "[OLD.HEADER]\r\nFullName=x\r\n";
  host.files["C:\\PROG\\Data\\Kordwin.dcf"] = WinLines(kCatalogue);
  host.files["C:\\RULES\\armti.txt"] = rules;
  host.files[kXmlFile] = xml;
  static const std::string empty_table = Table();
  for (const std::string name : kTables) host.files["C:\\OUT\\" + name + ".DBF"] = empty_table;
  LibXmlServices services(host.files);
  Library library(host, services);
  if (!library.Xml2ArmTi("C:\\PROG\\", "C:\\RULES\\armti.txt", kXmlFile, "C:\\OUT\\", account) &&
      library.quiet_failure().empty()) {
    std::abort();
  }
  std::string tables;
  for (const std::string name : kTables) {
    tables += TableDump(host.files["C:\\OUT\\" + name + ".DBF"].bytes());
  }
  return tables;
}

}  // namespace
}  // namespace customsconv

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::string_view kSeparator = "====\n";
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t rules_end = bytes.find(kSeparator);
  if (rules_end == std::string_view::npos) return 0;
  const std::string_view rules = bytes.substr(0, rules_end);
  const std::string_view xml = bytes.substr(rules_end + kSeparator.size());
  customsconv::LineWatcher watcher;
  customsconv::FileAccount account{.observer = &watcher};
  if (customsconv::Converted(rules, xml, nullptr) != customsconv::Converted(rules, xml, &account)) {
    std::abort();
  }
  return 0;
}
