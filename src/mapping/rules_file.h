#ifndef CUSTOMSCONV_MAPPING_RULES_FILE_H_
#define CUSTOMSCONV_MAPPING_RULES_FILE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "platform/files.h"

namespace customsconv {

// A rules file: the text, in code page 1251, that says which source value goes
// into which field of the table set. Lines are known by their index, from 0.
//
//   [DBRHEAD]                      opens the section of a head table …
//   =ESADout,KTDout                … for these kinds of documents
//   G011 = CustomsProcedure        a header line: target field, source expression
//   [DBRTOV]                       opens a sub-section: a child table …
//   ESADoutGoods{                  … filled from the records of this block
//   G33 = GoodsTNVEDCode
class RulesFile {
 public:
  // Lines end at CR LF, CR or LF.
  explicit RulesFile(std::string_view text, std::string_view name = {});
  // The lines are views into the object's own text.
  RulesFile(const RulesFile&) = delete;
  RulesFile& operator=(const RulesFile&) = delete;

  // Throws FileError.
  static RulesFile Load(const Files& files, std::string_view name);

  [[nodiscard]] int Count() const { return static_cast<int>(lines_.size()); }
  // The whole line: what the search for a section looks at.
  [[nodiscard]] std::string_view Line(int index) const CUSTOMSCONV_LIFETIME_BOUND {
    return lines_[static_cast<std::size_t>(index)];
  }
  // The line cut at 255 bytes: what the mapping looks at. Throws ListIndexError
  // behind the last line.
  [[nodiscard]] std::string_view ShortLine(int index) const CUSTOMSCONV_LIFETIME_BOUND;
  [[nodiscard]] std::string_view Text() const CUSTOMSCONV_LIFETIME_BOUND { return text_; }
  // Full name of the file, for messages.
  [[nodiscard]] const ShortText& name() const CUSTOMSCONV_LIFETIME_BOUND { return name_; }

  // First section from line 0 on whose kinds line names `kind` (anywhere in the
  // line, any letter case).
  [[nodiscard]] std::optional<int> FindSection(std::string_view kind) const;
  // First word of a header line: a table's name, as written.
  [[nodiscard]] std::string_view TableName(int header_line) const CUSTOMSCONV_LIFETIME_BOUND;
  // The next line that begins with "[" behind `line`; Count() when there is none.
  [[nodiscard]] int NextHeader(int line) const;

 private:
  std::string text_;
  std::vector<std::string_view> lines_;  // into text_
  ShortText name_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_MAPPING_RULES_FILE_H_
