#ifndef CUSTOMSCONV_TABLES_ROWS_DECLARATION_NUMBER_H_
#define CUSTOMSCONV_TABLES_ROWS_DECLARATION_NUMBER_H_

#include <optional>
#include <string>
#include <string_view>

#include "dbf/dbf_file.h"

namespace customsconv {

// The parts of a registration number "10702020/110615/0001234" as head rows hold them: customs
// office, day of registration, serial number. The day is ddmmyy or ddmmyyyy (with "." between or
// without), or yyyy-mm-dd; a century that is not given is any.
class DeclarationNumber {
 public:
  // Empty for a text that is not three parts with a number or nothing as day. Code page 1251.
  [[nodiscard]] static std::optional<DeclarationNumber> Parse(std::string_view text);
  // Whether the current row of a head table has it in its fields G071, G072 and G073; of these
  // those count that the table has. False when it has none.
  [[nodiscard]] bool IsOf(const TFileDbfFile& head) const;

 private:
  std::string office_;
  std::string day_;  // yyyymmdd, yymmdd or empty
  std::string serial_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_ROWS_DECLARATION_NUMBER_H_
