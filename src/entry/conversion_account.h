#ifndef CUSTOMSCONV_ENTRY_CONVERSION_ACCOUNT_H_
#define CUSTOMSCONV_ENTRY_CONVERSION_ACCOUNT_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "mapping/mapping_report.h"
#include "tables/cell_losses.h"
#include "tables/table_levels.h"
#include "tables/table_writer.h"
#include "text/foreign_encoding.h"
#include "xml/read/xml_container.h"

namespace customsconv {

// The account of a conversion: what the driver and all below it have to tell about one file.
//
//   FileAccount account;
//   library.Xml2ArmTi(program, rules, file, output, &account);
//   if (!account.IsWhole()) Keep(file);   // the export's own answer may be true all the same
//
// Reports only show it. All texts are code page 1251.

enum class SkipReason : std::uint8_t {
  kNotFirstDeclaration,  // a run converts one goods declaration
  kKindNotConverted,
  kNoSection,       // no section of the rules serves the kind
  kNotFirstOfKind,  // SBRHEAD and KBRHEAD take the first of a kind
  kNoTableSet,      // the catalogue has no type with the section's table
};

// What became of one document.
struct DocumentAccount {
  std::string kind{};   // code of the document's type
  int occurrence = 0;   // in the file, from 1
  int section = -1;     // index of the section's line in the rules
  std::string table{};  // head table of the section

  std::optional<SkipReason> skipped{};  // nothing below is set then
  // Its start was not found, and a document without any value was converted.
  bool is_empty = false;
  // The error that ended its section: what the rest of the section writes is missing.
  std::string section_error{};
  // Tables of the set that could not be opened: the rows that belong there are missing.
  std::vector<MissingTable> missing_tables{};
  // The lock that the user gave the document up at; nothing of it is in the tables.
  std::string abandoned_at{};
  RowCounts rows_added{};  // by table file

  [[nodiscard]] bool IsConverted() const { return !skipped && abandoned_at.empty(); }
};

// What the search for documents found in a file beside them.
struct FileContent {
  bool was_read = false;  // nothing below is known otherwise
  bool is_empty = false;
  bool is_xml = false;  // an element is in it
  std::vector<RootName> unknown_roots{};
};

// Watches a conversion while it runs. It never changes what is converted. May throw something that
// is no std::exception to end the run.
class ConversionObserver : public MappingObserver {
 public:
  // The file's text is in memory. What comes now takes time that grows with its size.
  virtual void TextRead(std::size_t /*bytes*/) {}
  // A document is done with; the account's last one.
  virtual void DocumentDone() = 0;
};

// What is known to have been lost on the way into the tables. Tables that are there hold
// everything else as the rules say.
struct FileLosses {
  CellLosses cells{};
  MappingLosses lines{};
  LostElements elements{};
  std::size_t replaced = 0;  // characters that code page 1251 lacks
};

struct FileAccount {
  ConversionObserver* observer = nullptr;  // null: nobody watches
  bool counts_losses = true;

  std::string number{};       // registration number
  bool number_drawn = false;  // it is a fresh one
  std::vector<DocumentAccount> documents{};
  FileContent content{};
  FileLosses losses{};
  // The rules or catalogue files of the run that are in no single-byte code page.
  std::vector<ForeignFile> foreign_files{};

  [[nodiscard]] bool ConvertedAny() const;
  // Something was converted, and nothing of it is known to be missing in the tables.
  [[nodiscard]] bool IsWhole() const;
  // Some document, sub-section, element or value is not in the tables as it was in the file.
  [[nodiscard]] bool HasLosses() const;
};

[[nodiscard]] FileContent ContentOf(const TXMLContainer& container);

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_CONVERSION_ACCOUNT_H_
