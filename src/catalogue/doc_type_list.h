#ifndef CUSTOMSCONV_CATALOGUE_DOC_TYPE_LIST_H_
#define CUSTOMSCONV_CATALOGUE_DOC_TYPE_LIST_H_

#include <forward_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/lifetime.h"
#include "catalogue/doc_info.h"
#include "services/environment.h"
#include "text/foreign_encoding.h"

namespace customsconv {

// The catalogue of document types, sorted by code without regard to letter case.
//
//   TDocTypeList types("Kordwin.dcf", /*all_files=*/true, environment);
//   TDocInfo& type = types.GetDocInfo("ESADout");
//   const TBasis& fields = type.GetBasis(environment);  // read when first asked for
//   for (int i = 0; i < types.Count(); ++i) Show(types.Item(i).Code);
class TDocTypeList {
 public:
  // Reads the named files ("|" between names; a name without "\" lies in the data folder) and, with
  // `all_files`, the DOS catalogue, the further files of the data folder and of the auxiliary
  // folder, and the list of checked types. Throws SilentAbort after a message of its own, or Error.
  TDocTypeList(std::string_view file_names, bool all_files, Environment& environment);
  ~TDocTypeList();
  TDocTypeList(const TDocTypeList&) = delete;
  TDocTypeList& operator=(const TDocTypeList&) = delete;

  // Whether a list read now would be this one: its files, and the settings that steer the reading,
  // are as they were.
  [[nodiscard]] bool IsCurrent(std::string_view file_names, bool all_files,
                               const Environment& environment) const;
  // What was found out for the documents of an earlier run is found out anew.
  void ForgetDocuments();

  [[nodiscard]] int Count() const { return static_cast<int>(types_.size()); }
  [[nodiscard]] TDocInfo& Item(int index) const CUSTOMSCONV_LIFETIME_BOUND {
    return *types_[static_cast<std::size_t>(index)];
  }
  // Index of the type of that code, any letter case; -1 when there is none.
  [[nodiscard]] int IndexOf(std::string_view code) const;
  // Throws Error "Не описан документ " + code.
  [[nodiscard]] TDocInfo& GetDocInfo(std::string_view code) const CUSTOMSCONV_LIFETIME_BOUND;
  // The type stored in that head table (any letter case); among several the one whose short name
  // holds the largest number, so that a newer format wins. Null when there is none.
  [[nodiscard]] TDocInfo* TableSetOf(std::string_view table) const CUSTOMSCONV_LIFETIME_BOUND;

  // Catalogue files that are in no single-byte code page or have other line ends.
  [[nodiscard]] const std::vector<ForeignFile>& ForeignFiles() const CUSTOMSCONV_LIFETIME_BOUND {
    return foreign_files_;
  }

 private:
  std::vector<ForeignFile> foreign_files_;
  // What the list was read from, a file that was not there included.
  struct Origin {
    std::string up_case_docs;  // the setting
    std::vector<std::pair<std::string, FileStamp>> files;
    friend bool operator==(const Origin&, const Origin&) = default;
  };
  [[nodiscard]] static Origin OriginOf(std::string_view file_names, bool all_files,
                                       const Environment& environment);

  Origin origin_;
  std::forward_list<std::string> file_names_;  // the types point to them
  std::vector<std::unique_ptr<TDocInfo>> types_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_DOC_TYPE_LIST_H_
