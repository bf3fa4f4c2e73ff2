#ifndef CUSTOMSCONV_DBF_DBF_LAYOUT_H_
#define CUSTOMSCONV_DBF_DBF_LAYOUT_H_

#include <memory>
#include <string_view>

#include "dbf/dbf_fields.h"
#include "dbf/dbf_format.h"
#include "dbf/dbf_image.h"

namespace customsconv {

// What a table's header says, checked against its size. Only the record count changes
// while a table is open, so one layout serves all who have it open.
struct TableLayout {
  dbf::Header header;
  TDescrs fields;
  FieldNames names;

  // Where record `number` (from 1) begins.
  [[nodiscard]] std::int64_t RecordAt(std::int64_t number) const {
    return header.header_length + (number - 1) * header.record_length;
  }
};

// The layout, or the beginning of the message that says why the bytes are no table.
// Whatever the header claims, nothing larger than the header is allocated.
struct LayoutResult {
  std::shared_ptr<const TableLayout> layout;
  std::string_view fault;
};
[[nodiscard]] LayoutResult ReadLayout(const TableBytes& bytes);

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_DBF_LAYOUT_H_
