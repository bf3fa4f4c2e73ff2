#ifndef CUSTOMSCONV_CATALOGUE_CATALOGUE_READER_H_
#define CUSTOMSCONV_CATALOGUE_CATALOGUE_READER_H_

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/type_collection.h"
#include "services/environment.h"
#include "text/foreign_encoding.h"

namespace customsconv {

enum class CatalogueKind {
  kWindows,
  kDos,  // in code page 866; its codes get "_" in front
};

// First pass over the catalogue files: the HEADER sections, which give the types, and the
// places of the sections that hold their fields.
class CatalogueReader {
 public:
  // Both must outlive the reader.
  CatalogueReader(TypeCollection& types, Environment& environment);

  // Adds the file's types. A file that is missing or defines no type throws SilentAbort
  // after a message; a code that is in the catalogue already ends the file with a message.
  // Throws ConversionError for a HEADER value that must be an integer and is not, FileError
  // when the file cannot be read.
  void ReadFile(const std::string& file_name, CatalogueKind kind);
  // The files read so far that are in no single-byte code page or have other line ends.
  [[nodiscard]] std::vector<ForeignFile> TakeForeignFiles() { return std::move(foreign_files_); }

 private:
  // False when the code is in the catalogue already.
  [[nodiscard]] bool StartType(std::string_view section_line);
  void StoreLine(std::string_view line);
  [[noreturn]] void Abort(const std::string& message);

  TypeCollection& types_;
  Environment& environment_;
  std::string up_case_docs_;
  std::vector<ForeignFile> foreign_files_;

  // Of the file being read.
  std::string_view file_name_;
  CatalogueKind kind_ = CatalogueKind::kWindows;
  TDocInfo* current_ = nullptr;         // null between the HEADER sections
  std::unique_ptr<TDocInfo> left_out_;  // the current type when the catalogue does not take it
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_CATALOGUE_READER_H_
