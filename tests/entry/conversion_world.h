#ifndef CUSTOMSCONV_TESTS_ENTRY_CONVERSION_WORLD_H_
#define CUSTOMSCONV_TESTS_ENTRY_CONVERSION_WORLD_H_

#include <string>
#include <string_view>
#include <vector>

#include "entry/library.h"
#include "support/catalogue_builder.h"
#include "support/fake_host.h"

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
    std::string catalogue = LinesOf(kTableSets);
    for (const std::string kind : {"ESADout", "KTDout", "DTSout", "Letter"}) {
      catalogue += LinesOf("[" + kind + ".HEADER], Prefix=<" + kind + " a=\"1\">" + kHeader + "[" +
                           kind + ".Fields]\n" + kFields);
    }
    host.files["C:\\PROG\\Data\\Kordwin.dcf"] = WinLines(catalogue);
    Rules(
        "[DBRHEAD], =ESADout,KTDout, G011=Proc, [DBRTOV], Goods{, G33=Code, [SBRHEAD], =DTSout_CU");
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

  // The lines of the rules file, with ", " between them.
  void Rules(const std::string& lines) {
    host.files["C:\\RULES\\armti.txt"] = WinLines(LinesOf(lines));
  }
  void Put(const std::string& table, const TableImage& image) {
    host.files["C:\\OUT\\" + table + ".DBF"] = image.Bytes();
  }
  std::string Table(const std::string& name) {
    return TableDump(host.files["C:\\OUT\\" + name + ".DBF"].bytes());
  }
  std::string Rows(const std::string& name) {
    return Table(name).substr(Table(name).find('\n') + 1);
  }

  static std::string Declaration(std::string_view codes, const std::string& root = "ESADout") {
    std::string xml = "<" + root + " a=\"1\"><Proc>IM</Proc>";
    for (const char code : codes) xml += "<Goods><Code>" + std::string(1, code) + "</Code></Goods>";
    return xml + "</" + root + ">";
  }

  // Of all kinds of documents from XML.
  static constexpr const char* kHeader = ", XmlType=x, MainBlock=Goods, ";
  static constexpr const char* kFields = R"(Proc=C2 | NAMESPACE="Proc", Text=C10 | NAMESPACE="Text"
Goods { NAMESPACE="Goods", Code=C10 | NAMESPACE="Code", }
)";
  static constexpr const char* kTableSets =
      R"([TD1.HEADER], DbfName=dbrhead.dbf, [TD1.Files], HEAD = DBRHEAD.DBF
[TD5.HEADER], MainBlock=TOVAR, DbfName=DBRHEAD.DBF, [TD5.Files]
HEAD = DBRHEAD.DBF [G073]
  TOVAR = DBRTOV.DBF [G073]
  COMP = DBRCMP.DBF [G073]
[TS.HEADER], DbfName=SBRHEAD.DBF, [TS.Files], HEAD = SBRHEAD.DBF [G073]
)";

  FakeHost host;
  NoServices services;
  ConversionObserver* observer = nullptr;
  Library library{host, services};
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_ENTRY_CONVERSION_WORLD_H_
