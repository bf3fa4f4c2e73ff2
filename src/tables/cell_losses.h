#ifndef CUSTOMSCONV_TABLES_CELL_LOSSES_H_
#define CUSTOMSCONV_TABLES_CELL_LOSSES_H_

#include <cstdint>
#include <string_view>

#include "dbf/dbf_fields.h"

namespace customsconv {

// Values that tables hold otherwise than they were written, counted cell by cell.
struct CellLosses {
  std::int32_t cut = 0;         // texts without their end
  std::int32_t number_cut = 0;  // numbers that lack digits in front: they are others now
  std::int32_t rounded = 0;     // numbers that lack decimals
  std::int32_t no_number = 0;   // what is no number stands as 0
  std::int32_t no_date = 0;     // what is no date, or no yes or no, stands as blanks
  std::int32_t replaced = 0;    // texts with "?" for what code page 866 lacks
  std::int32_t look_alike = 0;  // texts with a similar character for it: quotes, dashes

  [[nodiscard]] bool Any() const {
    return cut + number_cut + rounded + no_number + no_date + replaced > 0;
  }
  CellLosses& operator+=(const CellLosses& other);

  // Compares a value with the bytes that a table of such a field holds for it. Takes time in
  // proportion to the value.
  void Count(const FieldDescriptor& field, std::string_view value, std::string_view stored);
  // The same for a text that several fields hold, `width` bytes together.
  void CountLong(std::string_view value, std::size_t width);

 private:
  void CountCharacters(std::string_view text);
  void CountNumber(std::string_view value, std::string_view stored);
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TABLES_CELL_LOSSES_H_
