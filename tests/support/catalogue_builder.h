#ifndef CUSTOMSCONV_TESTS_SUPPORT_CATALOGUE_BUILDER_H_
#define CUSTOMSCONV_TESTS_SUPPORT_CATALOGUE_BUILDER_H_

#include <sstream>
#include <string>
#include <string_view>

#include "base/dos_code_page.h"
#include "catalogue/doc_type_list.h"
#include "support/environment_builder.h"
#include "support/table_image.h"

namespace customsconv {

// The catalogue's text for a type. Texts have "\n" between lines; a block may stand on one line:
// TypeText("DS1", "MainBlock=TOVAR", "G01=C10 | Тип\nTOVAR { G33=C10 }").
[[nodiscard]] inline std::string TypeText(const std::string& code, const std::string& header,
                                          const std::string& fields) {
  std::string text = "[" + code + ".HEADER]\n" + header + "\n[" + code + ".Fields]\n";
  for (const char c : fields + "\n") {
    if (c == '}') text += '\n';
    text += c;
    if (c == '{') text += '\n';
  }
  return text;
}

// A program folder in memory with a small catalogue. Texts are UTF-8 with "\n" between lines.
//
//   CatalogueWorld world{TypeText("DS1", "MainBlock=TOVAR", "G01=C10 | Тип")};
//   TDocTypeList types("Kordwin.dcf", /*all_files=*/false, world);
//
// DOCUMENT.INI is there (and empty), so that documents can be created.
class CatalogueWorld : public TestEnvironment {
 public:
  explicit CatalogueWorld(std::string_view kordwin = {}, std::string_view kord_ini = {})
      : TestEnvironment(kord_ini) {
    host.files["C:\\PROG\\DOCUMENT.INI"] = "";
    if (!kordwin.empty()) Dcf(kordwin);
  }

  // Adds to Kordwin.dcf of the data folder.
  void Dcf(std::string_view text) { DcfFile("C:\\PROG\\Data\\Kordwin.dcf", kordwin_.append(text)); }
  // Any other file of the catalogue, by its full name; replaces what was there.
  void DcfFile(std::string_view name, std::string_view text) { host.files[name] = WinLines(text); }
  // The DOS catalogue, which a full load cannot do without.
  void DosDcf(std::string_view text) {
    host.files["C:\\PROG\\document.dcf"] = DosFromWin(WinLines(text));
  }

  // Adds a type that is kept in tables of C:\OUT, with the main block TOVAR: the lines of its Files
  // section. What stands behind ":" are the fields of a table, which is put there without rows.
  //
  //   world.TableSet("TD5", R"(
  //   HEAD = DBRHEAD [G073]    : G073 C7, G011 C4
  //     TOVAR = DBRTOV [G073]  : G073 C7, G32 N5
  //   )");
  void TableSet(std::string_view code, std::string_view lines) {
    std::string files;
    std::istringstream stream{std::string(lines)};
    for (std::string line; std::getline(stream, line);) {
      const std::size_t end = line.find(" : ");
      files += line.substr(0, end) + "\n";
      if (end != std::string::npos) Table(TableOf(line), TableImage(line.substr(end + 3)));
    }
    const std::string type(code);
    Dcf("[" + type + ".HEADER]\nDbfName=x\nMainBlock=TOVAR\n[" + type + ".Files]\n" + files);
  }
  // Puts the table C:\OUT\<name>.DBF there.
  void Table(const std::string& name, const TableImage& table) {
    host.files[TablePath(name)] = table.Bytes();
  }
  static std::string TablePath(const std::string& name) { return "C:\\OUT\\" + name + ".DBF"; }
  // Its rows on disk, as TableDump writes them.
  std::string Rows(const std::string& name) {
    const std::string dump = TableDump(host.files[TablePath(name)].bytes());
    return dump.substr(dump.find('\n') + 1);
  }

 private:
  // The word behind "=".
  static std::string TableOf(const std::string& files_line) {
    std::istringstream words(files_line.substr(files_line.find('=') + 1));
    std::string table;
    words >> table;
    return table;
  }

  std::string kordwin_;
};

// A catalogue of one type T with these Fields and HEADER lines.
struct TypeWorld : CatalogueWorld {
  explicit TypeWorld(const std::string& fields, const std::string& header = "FullName=T\n",
                     std::string_view kord_ini = {})
      : CatalogueWorld("[T.HEADER]\n" + header + "[T.Fields]\n" + fields, kord_ini) {}
  TDocInfo& Info() { return types.GetDocInfo("t"); }
  TBasis& Basis() { return Info().GetBasis(*this); }

  TDocTypeList types{"Kordwin.dcf", /*all_files=*/false, *this};
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_CATALOGUE_BUILDER_H_
