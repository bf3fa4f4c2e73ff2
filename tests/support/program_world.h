#ifndef CUSTOMSCONV_TESTS_SUPPORT_PROGRAM_WORLD_H_
#define CUSTOMSCONV_TESTS_SUPPORT_PROGRAM_WORLD_H_

#include <string>
#include <string_view>

#include "support/environment_builder.h"
#include "support/fake_host.h"
#include "support/table_image.h"

namespace customsconv {

// All that a conversion needs, in memory and small enough to see through: a program folder with a
// catalogue, a table set, rules and one declaration, kFile.
struct ProgramWorld {
  ProgramWorld() {
    host.files["C:\\PROG\\kord.ini"] = "";
    host.files["C:\\PROG\\DOCUMENT.INI"] = "";
    host.files["C:\\PROG\\document.dcf"] = "[OLD.HEADER]\r\nFullName=x\r\n";
    host.files["C:\\PROG\\Data\\Kordwin.dcf"] = WinLines(kCatalogue);
    host.files["C:\\RULES\\armti.txt"] = WinLines(kRules);
    host.files["C:\\OUT\\DBRHEAD.DBF"] = TableImage("G073 C7, G011 C4").Bytes();
    host.files["C:\\OUT\\DBRTOV.DBF"] = TableImage("G073 C7, G33 C2").Bytes();
    Xml("10702020_110615_0001234", "<Proc>ИМ</Proc><Goods><Code>0101</Code></Goods>");
  }

  // A file of one declaration with this content.
  void Xml(std::string_view name, std::string_view content) {
    host.files["C:\\IN\\" + std::string(name) + ".xml"] =
        Win("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\r\n<ESADout a=\"1\">" +
            std::string(content) + "</ESADout>\r\n");
  }
  std::string Table(std::string_view name) {
    return TableDump(host.files["C:\\OUT\\" + std::string(name)].bytes());
  }

  static constexpr const char* kFile = "C:\\IN\\10702020_110615_0001234.xml";
  static constexpr const char* kLock = "C:\\OUT\\veltlock.$$$";
  static constexpr const char* kCatalogue = R"([ESADout.HEADER]
ShortName=ЭД ДТ
XmlType=x
MainBlock=Goods
Prefix=<ESADout a="1">
[ESADout.Fields]
Proc=C2 |Вид NAMESPACE="Proc"
Empty=C5 | NAMESPACE="Empty"
Goods { NAMESPACE="Goods"
  Code=C10 |Код NAMESPACE="p:Code"
  Part { NAMESPACE="Part"
    Sum=N10.2 | NAMESPACE="Sum"
  }
}
[DT5.HEADER]
ShortName=ДТ 5
MainBlock=TOVAR
DbfName=DBRHEAD.DBF
[DT5.Files]
DBRHEAD = DBRHEAD.DBF [G073]
  TOVAR = DBRTOV.DBF [G073]
)";
  static constexpr const char* kRules = R"([DBRHEAD]
=ESADout
G011=Proc
[DBRTOV]
Goods{
G33=Code
NOFIELD=Code
G33=*Nothing
G073=Code
)";

  FakeHost host;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_PROGRAM_WORLD_H_
