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
    host.files["C:\\PROG\\Data\\Kordwin.dcf"] = WinLines(
        KindOf("ESADout") + KindOf("KTDout") + KindOf("DTSout") + KindOf("Letter") + kTableSets);
    host.files["C:\\RULES\\armti.txt"] = WinLines(kRules);
    Put("SBRHEAD", TableImage("G073 C7"));
    Put("DBRHEAD", TableImage("G073 C7, G071 C8, G011 C4, G19 L1"));
    Put("DBRTOV", TableImage("G073 C7, G32 N5, G33 C10"));
    Put("DBRCMP", TableImage("G073 C7, NAME C10"));
  }

  // Converts one file whose documents follow each other in envelopes.
  bool Convert(const std::vector<std::string>& documents,
               std::string_view name = "10702020_110615_0001234") {
    std::string xml;
    for (const std::string& document : documents) xml += "<DocBody>" + document + "</DocBody>\n";
    const std::string file = "C:\\IN\\" + std::string(name) + ".xml";
    host.files[file] = xml;
    return library.Xml2ArmTi("C:\\PROG\\", "C:\\RULES\\armti.txt", ShortText::Cut(file),
                             "C:\\OUT\\", observer);
  }

  std::string Table(std::string_view name) {
    return TableDump(host.files["C:\\OUT\\" + std::string(name)].bytes());
  }

  void Put(const std::string& table, const TableImage& image) {
    host.files["C:\\OUT\\" + table + ".DBF"] = image.Bytes();
  }

  static std::string Declaration(std::string_view codes, std::string_view root = "ESADout") {
    std::string goods;
    for (const char code : codes) {
      goods += "<Goods><Code>" + std::string(1, code) + "</Code></Goods>";
    }
    return "<" + std::string(root) + " a=\"1\"><Proc>IM</Proc>" + goods + "</" + std::string(root) +
           ">";
  }

  // A kind of documents from XML.
  static std::string KindOf(const std::string& code) {
    return "[" + code + ".HEADER]\nXmlType=x\nMainBlock=Goods\nPrefix=<" + code + " a=\"1\">\n[" +
           code + R"(.Fields]
Proc=C2 | NAMESPACE="Proc"
Text=C10 | NAMESPACE="Text"
Goods { NAMESPACE="Goods"
  Code=C10 | NAMESPACE="Code"
}
)";
  }

  static constexpr const char* kTableSets = R"([TD1.HEADER]
DbfName=dbrhead.dbf
[TD1.Files]
HEAD = DBRHEAD.DBF
[TD5.HEADER]
MainBlock=TOVAR
DbfName=DBRHEAD.DBF
[TD5.Files]
HEAD = DBRHEAD.DBF [G073]
  TOVAR = DBRTOV.DBF [G073]
  COMP = DBRCMP.DBF [G073]
[TS.HEADER]
DbfName=SBRHEAD.DBF
[TS.Files]
HEAD = SBRHEAD.DBF [G073]
)";
  static constexpr const char* kRules = R"([DBRHEAD]
=ESADout,KTDout
G011=Proc
[DBRTOV]
Goods{
G33=Code
[SBRHEAD]
=DTSout_CU
)";

  FakeHost host;
  NoServices services;
  ConversionObserver* observer = nullptr;
  Library library{host, services};
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_ENTRY_CONVERSION_WORLD_H_
