#ifndef CUSTOMSCONV_TESTS_SUPPORT_TABLE_IMAGE_H_
#define CUSTOMSCONV_TESTS_SUPPORT_TABLE_IMAGE_H_

#include <string>
#include <string_view>
#include <vector>

#include "base/dos_code_page.h"
#include "support/text.h"

namespace customsconv {

// The bytes of a dBase table, put together without the table engine:
//
//   files["C:\\OUT\\DBRHEAD.DBF"] =
//       TableImage("G32 N5, PRICE N10.2, NAME C20").Row({"1", "2.50", "Сахар"}).Bytes();
//
// Names and values are UTF-8 as the sources hold them; values are padded on the right,
// those of "N" fields on the left, missing ones are blank.
class TableImage {
 public:
  TableImage() = default;
  explicit TableImage(std::string_view fields);
  TableImage& Field(std::string_view name, char type, int length, int decimals = 0) {
    fields_.push_back({DosFromWin(Win(name)), type, length, decimals});
    return *this;
  }
  TableImage& Row(const std::vector<std::string>& values) { return AddRow(' ', values); }
  TableImage& DeletedRow(const std::vector<std::string>& values) { return AddRow('*', values); }
  // The layout with version byte 0x30 and 264 bytes behind the descriptors.
  TableImage& Extended() {
    extended_ = true;
    return *this;
  }
  [[nodiscard]] std::string Bytes() const;

 private:
  struct FieldSpec {
    std::string name;
    char type;
    int length, decimals;
  };
  TableImage& AddRow(char mark, const std::vector<std::string>& values);

  bool extended_ = false;
  std::vector<FieldSpec> fields_;
  std::vector<std::string> rows_;
};

// A table as readable UTF-8 text: a line of fields, then a line a row with the
// values that are not blank, without the blanks at their ends.
//
//   G32 N5, PRICE N10.2, NAME C20
//   1: G32="    1" NAME="Сахар"
//   2 deleted: G32="    2"
[[nodiscard]] std::string TableDump(std::string_view bytes);

// `table` with the `size` bytes of its header at `at` replaced by a number: what damaged and
// hostile tables are made of.
[[nodiscard]] std::string WithNumber(std::string table, std::size_t at, int size,
                                     std::size_t number);
[[nodiscard]] inline std::string WithByte(std::string table, std::size_t at, std::size_t byte) {
  return WithNumber(std::move(table), at, 1, byte);
}

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_TABLE_IMAGE_H_
