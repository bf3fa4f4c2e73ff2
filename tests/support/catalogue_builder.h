#ifndef CUSTOMSCONV_TESTS_SUPPORT_CATALOGUE_BUILDER_H_
#define CUSTOMSCONV_TESTS_SUPPORT_CATALOGUE_BUILDER_H_

#include <string>
#include <string_view>

#include "base/code_pages.h"
#include "support/environment_builder.h"

namespace customsconv {

// A program folder in memory with a small catalogue. Texts are UTF-8 with "\n" between lines.
//
//   CatalogueWorld world;
//   world.Dcf("[DS1.HEADER]\nMainBlock=TOVAR\n[DS1.Fields]\nG01=C10 | Тип\n");
//   TDocTypeList types("Kordwin.dcf", /*all_files=*/false, world);
//
// DOCUMENT.INI is there (and empty), so that documents can be created.
class CatalogueWorld : public TestEnvironment {
 public:
  explicit CatalogueWorld(std::string_view kord_ini = {}) : TestEnvironment(kord_ini) {
    host.files["C:\\PROG\\DOCUMENT.INI"] = "";
  }

  // Adds to Kordwin.dcf of the data folder.
  CatalogueWorld& Dcf(std::string_view text) {
    DcfFile("C:\\PROG\\Data\\Kordwin.dcf", kordwin_.append(text));
    return *this;
  }
  // Any other file of the catalogue, by its full name; replaces what was there.
  void DcfFile(std::string_view name, std::string_view text) { host.files[name] = WinLines(text); }
  // The DOS catalogue, which a full load cannot do without.
  void DosDcf(std::string_view text) {
    host.files["C:\\PROG\\document.dcf"] = DosFromWin(WinLines(text));
  }

 private:
  std::string kordwin_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_CATALOGUE_BUILDER_H_
