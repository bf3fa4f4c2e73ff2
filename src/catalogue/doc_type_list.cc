#include "catalogue/doc_type_list.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

#include "base/cp1251_literal.h"
#include "base/letter_case.h"
#include "base/short_text.h"
#include "catalogue/catalogue_reader.h"
#include "catalogue/type_collection.h"
#include "config/settings.h"
#include "text/char_set.h"
#include "text/file_names.h"
#include "text/numbers.h"
#include "text/words.h"

namespace customsconv {
namespace {

constexpr std::string_view kCatalogueMask = "*.dcf";
constexpr std::string_view kDosCatalogue = "document.dcf";
// Files of the data folder that are not read with the others. A name is left out when it
// stands anywhere in this text, so "WIN.DCF" is, too.
constexpr std::string_view kLeftOut = "KORDWIN.DCF,MYDCF.DCF,ARMTI.DCF";
constexpr CharSet kFileNameDelimiters("|");
constexpr CharSet kCheckedDocsDelimiters(" ,");

bool HasFolder(std::string_view name) {
  return std::any_of(name.begin(), name.end(), IsPathSeparator);
}

struct CatalogueFile {
  std::string path;
  CatalogueKind kind = CatalogueKind::kWindows;
};
using CatalogueFiles = std::vector<CatalogueFile>;

void AddFolder(const Files& files, const std::string& folder, std::string_view left_out,
               CatalogueFiles& found) {
  for (const std::string& name : files.Find(folder, kCatalogueMask)) {
    if (!Contains(left_out, UpperCaseRu(name))) found.push_back({folder + name});
  }
}

// The files of a list, in the order in which they are read.
CatalogueFiles FilesOf(std::string_view file_names, bool all_files,
                       const Environment& environment) {
  CatalogueFiles found;
  for (const std::string_view name : Words(file_names, kFileNameDelimiters)) {
    found.push_back({(HasFolder(name) ? "" : environment.data_path) + std::string(name)});
  }
  if (!all_files) return found;
  const Files& files = environment.host.files;
  found.push_back({environment.base_path + std::string(kDosCatalogue), CatalogueKind::kDos});
  AddFolder(files, environment.data_path, kLeftOut, found);
  if (environment.aux_path != environment.data_path) {
    AddFolder(files, environment.aux_path, {}, found);
  }
  return found;
}

std::string CheckedTypesFile(const Environment& environment) {
  return environment.base_path + "DOCCHECK.INI";
}

void MarkCheckedTypes(const TDocTypeList& types, const Environment& environment) {
  const std::string file_name = CheckedTypesFile(environment);
  if (!environment.host.files.Exists(file_name)) return;
  const TConfiguration doc_check(environment.host, file_name, CreateMode::kCreate, CodePage::kDos);
  const std::string codes = settings::CheckedDocs(doc_check);
  for (const std::string_view code : Words(CutToShort(codes), kCheckedDocsDelimiters)) {
    types.GetDocInfo(code).Checked = true;
  }
}

using Types = std::vector<std::unique_ptr<TDocInfo>>;

// The first eight letters of a code as a number that orders as they do.
std::uint64_t FirstLetters(std::string_view code) {
  std::uint64_t letters = 0;
  for (std::size_t i = 0; i < sizeof letters; ++i) {
    letters =
        letters << 8 | (i < code.size() ? static_cast<unsigned char>(UpperCaseChar(code[i])) : 0);
  }
  return letters;
}

// The first letters nearly always decide, without a look at the types, which lie far apart.
Types SortedByCode(Types types) {
  std::vector<std::pair<std::uint64_t, std::unique_ptr<TDocInfo>>> keyed;
  keyed.reserve(types.size());
  for (auto& type : types) {
    const std::uint64_t letters = FirstLetters(type->Code);
    keyed.emplace_back(letters, std::move(type));
  }
  std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
    if (a.first != b.first) return a.first < b.first;
    return CompareTextRu(a.second->Code, b.second->Code) < 0;
  });
  std::transform(keyed.begin(), keyed.end(), types.begin(),
                 [](auto& entry) { return std::move(entry.second); });
  return types;
}

}  // namespace

TDocTypeList::TDocTypeList(std::string_view file_names, bool all_files, Environment& environment)
    : origin_(OriginOf(file_names, all_files, environment)) {  // taken first: a later change shows
  TypeCollection types;
  CatalogueReader reader(types, environment);
  for (const CatalogueFile& file : FilesOf(file_names, all_files, environment)) {
    reader.ReadFile(file.path, file.kind);
  }

  foreign_files_ = reader.TakeForeignFiles();
  types_ = SortedByCode(types.Take(file_names_));
  if (all_files) MarkCheckedTypes(*this, environment);
}

TDocTypeList::~TDocTypeList() = default;

TDocTypeList::Origin TDocTypeList::OriginOf(std::string_view file_names, bool all_files,
                                            const Environment& environment) {
  const Files& files = environment.host.files;
  Origin origin{settings::UpCaseDocs(environment.config), {}};
  const auto add = [&](const std::string& path) {
    origin.files.emplace_back(path, files.Stamp(path));
  };
  for (const CatalogueFile& file : FilesOf(file_names, all_files, environment)) add(file.path);
  if (all_files) add(CheckedTypesFile(environment));
  return origin;
}

bool TDocTypeList::IsCurrent(std::string_view file_names, bool all_files,
                             const Environment& environment) const {
  return origin_ == OriginOf(file_names, all_files, environment);
}

void TDocTypeList::ForgetDocuments() {
  for (const std::unique_ptr<TDocInfo>& type : types_) type->ForgetDocuments();
}

int TDocTypeList::IndexOf(std::string_view code) const {
  const auto found =
      std::lower_bound(types_.begin(), types_.end(), code,
                       [](const std::unique_ptr<TDocInfo>& type, std::string_view wanted) {
                         return CompareTextRu(type->Code, wanted) < 0;
                       });
  if (found == types_.end() || !SameTextRu((*found)->Code, code)) return -1;
  return static_cast<int>(found - types_.begin());
}

TDocInfo& TDocTypeList::GetDocInfo(std::string_view code) const {
  const int index = IndexOf(code);
  if (index < 0) throw Error(std::string("Не описан документ "_cp1251).append(code));
  return Item(index);
}

TDocInfo* TDocTypeList::TableSetOf(std::string_view table) const {
  TDocInfo* taken = nullptr;
  double taken_number = 0;
  for (const std::unique_ptr<TDocInfo>& type : types_) {
    if (!type->HasDbfName || !SameTextRu(type->DbfName, table)) continue;
    const double number = std::nearbyint(NumberFromText(type->ShortName));
    if (number > taken_number || taken_number <= 0) {
      taken = type.get();
      taken_number = number;
    }
  }
  return taken;
}

}  // namespace customsconv
