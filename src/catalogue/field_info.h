#ifndef CUSTOMSCONV_CATALOGUE_FIELD_INFO_H_
#define CUSTOMSCONV_CATALOGUE_FIELD_INFO_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/field_type.h"

namespace customsconv {

class TBasis;

// One part of a composite field.
struct TSubField {
  std::string prefix;  // "#" has become CR
  std::string full_name;
  std::string ref_name;
  std::string caption;
  std::uint8_t number = 0;      // nesting level
  std::uint8_t ref_number = 0;  // the digits at the end of ref_name
  bool flag = false;
};
using TSubFieldsList = std::vector<TSubField>;

// One entry of a type's field tree: a plain field, a composite field, a part of
// one, or a block.
struct TFieldInfo {
  TFieldInfo();
  ~TFieldInfo();
  TFieldInfo(TFieldInfo&&) noexcept;
  TFieldInfo& operator=(TFieldInfo&&) noexcept;

  std::string name;
  std::string caption;  // attributes removed
  FieldType type = FieldType::kText;
  std::int16_t width = 0;  // characters, per line for multi-line fields
  std::int16_t lines = 1;
  std::uint8_t decimals = 0;
  std::uint16_t table_width = 0;          // of a table's field: its bytes in a row
  std::vector<std::uint8_t> line_widths;  // of a field given as a list of widths
  std::uint8_t seq = 0;
  std::uint8_t prnt = 0;
  std::uint8_t choice = 0;
  std::uint8_t max = 0;
  std::string pattern;
  std::string xml_path;  // "#"-separated elements with namespace prefixes
  bool is_block = false;

  std::unique_ptr<TBasis> block;  // of a block: its level
  TSubFieldsList sub_fields;      // of a composite
  int part = -1;                  // of a part: position in its parent's list, -1 without

  // Long text is shown as one line when flattened and is re-broken when stored.
  [[nodiscard]] bool IsLongText() const;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_FIELD_INFO_H_
