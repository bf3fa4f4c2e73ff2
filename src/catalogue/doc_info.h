#ifndef CUSTOMSCONV_CATALOGUE_DOC_INFO_H_
#define CUSTOMSCONV_CATALOGUE_DOC_INFO_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "catalogue/basis.h"
#include "platform/files.h"
#include "services/environment.h"

namespace customsconv {

class TDocInfo;

// Field identifiers: top-level fields count from 1, fields of the main block from here.
inline constexpr int kFirstMainBlockId = 1000;

// The field identifiers of a type.
class TDocProtect {
 public:
  // Reads the editor's fill settings of a type that is not a table set: from the
  // configuration, else from DOCUMENT.INI. Throws Error when that is missing. `info` and
  // `basis` must outlive the object.
  TDocProtect(const TDocInfo& info, const TBasis& basis, Environment& environment);
  // 0 when neither level has the name.
  [[nodiscard]] std::uint16_t FieldIdByName(std::string_view name) const;
  // Looks for the main block again, after the levels of a table set were rebuilt.
  void FindMainBasis();

 private:
  const TDocInfo& info_;
  const TBasis& basis_;
  // The main block's level; the top level when there is no such block.
  const TBasis* main_basis_ = nullptr;
};

// Where a type's sections begin in its catalogue file as it was when the catalogue was
// loaded; kNowhere for what was not seen then.
struct SectionPlaces {
  static constexpr std::int64_t kNowhere = -1;
  FileStamp stamp = kNoStamp;      // of the file
  std::int64_t header = kNowhere;  // of the line that began the type
  std::int64_t fields = kNowhere;
  std::int64_t files = kNowhere;
};

// One document type of the catalogue.
class TDocInfo {
 public:
  TDocInfo() = default;
  TDocInfo(const TDocInfo&) = delete;
  TDocInfo& operator=(const TDocInfo&) = delete;

  std::string_view FileName;  // the catalogue file that defines the type; kept by the catalogue
  std::string Code;
  std::string DocFileLabel, DocFileExt, FullName, ShortName, MainKey, MainBlock, MainQty;
  std::string GoodsBlock, KeyField, GCodeField, ConstrMain, ConstrBlock, XmlType;
  std::string BlankTypList, DbfName;
  std::uint32_t BlankColor = 0x808080;
  std::uint8_t BlocksOnExtraPage = 0, BlocksOnMainPage = 0, DefNoPrintFlag = 0;
  std::int32_t Grouping = 0, HasBackSide = 0;
  bool ScriptRevise = false, TablePrint = false, AllUpCase = false, DoubleSided = false;
  bool HasDbfName = false, Checked = false;
  double PrnLineWidth = 0;
  std::uint16_t DateFieldNo = 0, UsdRateFieldNo = 0, EurRateFieldNo = 0;
  std::uint16_t CRateFieldNo1 = 0, CRateFieldNo2 = 0;
  std::vector<std::string> ExtraLines;  // HEADER lines that matched no key
  SectionPlaces Places;

  // The type's field tree, built from the catalogue file as it is on disk on the first
  // call. Throws Error with file and section in its text; the next call then tries again.
  // A table-set type gives a TDbfBasis, without fields until LoadFromDbf.
  [[nodiscard]] TBasis& GetBasis(Environment& environment) CUSTOMSCONV_LIFETIME_BOUND;
  // To be told by whoever rebuilt the levels of a table-set type.
  void LevelsChanged();
  // Built with the first document of the type.
  [[nodiscard]] const TDocProtect& Numbering(Environment& environment) CUSTOMSCONV_LIFETIME_BOUND;

  // The next document is the type's first one again.
  void ForgetDocuments() { numbering_.reset(); }

  // Value of the first extra line "key=value" whose text before "=" is `key`, any
  // letter case, no blanks skipped; trimmed; empty when there is none. Points into ExtraLines.
  [[nodiscard]] std::string_view GetHeaderValue(std::string_view key) const
      CUSTOMSCONV_LIFETIME_BOUND;
  // Name of the root element of the type's documents.
  [[nodiscard]] std::string XmlDocName() const;

 private:
  std::unique_ptr<TBasis> basis_;
  std::unique_ptr<TDocProtect> numbering_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_DOC_INFO_H_
