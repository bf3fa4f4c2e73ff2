#ifndef CUSTOMSCONV_TESTS_ENTRY_CONVERSION_WORLD_H_
#define CUSTOMSCONV_TESTS_ENTRY_CONVERSION_WORLD_H_

#include <string>
#include <string_view>
#include <vector>

#include "entry/library.h"
#include "support/environment_builder.h"
#include "support/fake_host.h"
#include "support/table_image.h"
#include "support/text.h"

namespace customsconv {

// XML services that are not there.
class NoServices : public XmlServices {
 public:
  std::unique_ptr<XmlDocumentService> CreateDocument(std::string_view) override { return nullptr; }
  std::unique_ptr<XmlSchemaCache> CreateSchemaCache(std::string_view) override { return nullptr; }
};

// A program folder, a table set and rules in memory, small enough to see through.
class ConversionWorld {
 public:
  ConversionWorld() {
    host.clock.Set({2026, 3, 17});
    host.files["C:\\PROG\\kord.ini"] = "";
    host.files["C:\\PROG\\DOCUMENT.INI"] = "";
    host.files["C:\\PROG\\document.dcf"] = "[OLD.HEADER]\r\nFullName=x\r\n";
    host.files["C:\\PROG\\Data\\Kordwin.dcf"] = WinLines(kCatalogue);
    host.files["C:\\RULES\\armti.txt"] = WinLines(kRules);
    const TableImage number = TableImage().Field("G073", 'C', 7);
    host.files["C:\\OUT\\SBRHEAD.DBF"] = number.Bytes();
    host.files["C:\\OUT\\DBRHEAD.DBF"] =
        TableImage(number).Field("G071", 'C', 8).Field("G011", 'C', 4).Field("G19", 'L', 1).Bytes();
    host.files["C:\\OUT\\DBRTOV.DBF"] =
        TableImage(number).Field("G32", 'N', 5).Field("G33", 'C', 10).Bytes();
    host.files["C:\\OUT\\DBRCMP.DBF"] = TableImage(number).Field("NAME", 'C', 10).Bytes();
  }

  // Converts one file whose documents follow each other in envelopes.
  bool Convert(const std::vector<std::string>& documents,
               std::string_view name = "10702020_110615_0001234") {
    std::string xml;
    for (const std::string& document : documents) xml += "<DocBody>" + document + "</DocBody>\n";
    const std::string file = "C:\\IN\\" + std::string(name) + ".xml";
    host.files[file] = xml;
    return library.Xml2ArmTi("C:\\PROG\\", "C:\\RULES\\armti.txt", file, "C:\\OUT\\", observer);
  }

  std::string Table(std::string_view name) {
    return TableDump(host.files["C:\\OUT\\" + std::string(name)].bytes());
  }

  static std::string Declaration(std::string_view codes, std::string_view root = "ESADout") {
    std::string goods;
    for (const char code : codes) {
      goods += "<Goods><Code>" + std::string(1, code) + "</Code></Goods>";
    }
    return "<" + std::string(root) + " a=\"1\"><Proc>IM</Proc>" + goods + "</" + std::string(root) +
           ">";
  }

  static constexpr const char* kCatalogue =
      "[ESADout.HEADER]\nShortName=DT\nXmlType=x\nMainBlock=Goods\nPrefix=<ESADout a=\"1\">\n"
      "[ESADout.Fields]\nProc=C2 | NAMESPACE=\"Proc\"\n"
      "Goods { NAMESPACE=\"Goods\"\n  Code=C10 | NAMESPACE=\"Code\"\n}\n"
      "[KTDout.HEADER]\nShortName=KTD\nXmlType=x\nMainBlock=Goods\nPrefix=<KTDout a=\"1\">\n"
      "[KTDout.Fields]\nProc=C2 | NAMESPACE=\"Proc\"\n"
      "Goods { NAMESPACE=\"Goods\"\n  Code=C10 | NAMESPACE=\"Code\"\n}\n"
      "[DTSout.HEADER]\nShortName=DTS\nXmlType=x\nPrefix=<DTSout a=\"1\">\n"
      "[DTSout.Fields]\nProc=C2 | NAMESPACE=\"Proc\"\n"
      "[Letter.HEADER]\nShortName=L\nXmlType=x\nPrefix=<Letter a=\"1\">\n"
      "[Letter.Fields]\nText=C10 | NAMESPACE=\"Text\"\n"
      "[TD1.HEADER]\nShortName=DT 1\nMainBlock=TOVAR\nDbfName=dbrhead.dbf\n"
      "[TD1.Files]\nHEAD=DBRHEAD.DBF\n"
      "[TD5.HEADER]\nShortName=DT 5\nMainBlock=TOVAR\nDbfName=DBRHEAD.DBF\n"
      "[TD5.Files]\nHEAD = DBRHEAD.DBF [G073]\n  TOVAR = DBRTOV.DBF [G073]\n"
      "  COMP = DBRCMP.DBF [G073]\n"
      "[TS.HEADER]\nShortName=DTS 1\nDbfName=SBRHEAD.DBF\n[TS.Files]\nHEAD = SBRHEAD.DBF [G073]\n";

  static constexpr const char* kRules =
      "[DBRHEAD]\n=ESADout,KTDout\nG011=Proc\n[DBRTOV]\nGoods{\nG33=Code\n"
      "[SBRHEAD]\n=DTSout_CU\n";

  FakeHost host;
  NoServices services;
  ConversionObserver* observer = nullptr;
  Library library{host, services};
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_ENTRY_CONVERSION_WORLD_H_
