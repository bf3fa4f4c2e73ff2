#ifndef CUSTOMSCONV_DBF_DBF_FIELDS_H_
#define CUSTOMSCONV_DBF_DBF_FIELDS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"

namespace customsconv {

// Type letters of table fields that mean something here; a table may have others. (Those of
// catalogue fields are another alphabet: catalogue/field_type.h.)
namespace column_type {
inline constexpr char kCharacter = 'C';
inline constexpr char kNumber = 'N';
inline constexpr char kFloat = 'F';  // a number that other programs write
inline constexpr char kDate = 'D';
inline constexpr char kLogical = 'L';
inline constexpr char kMemo = 'M';  // the number of a block in another file
}  // namespace column_type

// One field of a dBase table.
struct FieldDescriptor {
  std::string name;          // code page 1251, upper case, padded with blanks to 11
  std::uint16_t offset = 0;  // within the record; the first field stands at 1
  std::uint16_t length = 0;  // in bytes
  std::uint8_t decimals = 0;
  char type = column_type::kCharacter;

  // `name` without its padding.
  [[nodiscard]] std::string_view TrimmedName() const CUSTOMSCONV_LIFETIME_BOUND;
};

// The fields of a table in table order.
using TDescrs = std::vector<FieldDescriptor>;

// Finds fields by name in constant time, without regard to letter case and to blanks
// around the name. Among equal names the last field wins.
class FieldNames {
 public:
  FieldNames() = default;
  explicit FieldNames(const TDescrs& fields);
  // Index (from 0) or -1. Allocates nothing.
  [[nodiscard]] int Find(std::string_view name) const;

 private:
  // A trimmed, upper-cased name of up to 11 bytes in two words.
  struct Key {
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    bool operator==(const Key&) const = default;
  };
  struct Slot {
    Key key;
    int field = -1;
  };

  // Empty for a name that is too long for any field.
  static std::optional<Key> KeyOf(std::string_view name);
  // The slot that holds the key or is free for it.
  [[nodiscard]] std::size_t SlotOf(const Key& key) const;

  std::vector<Slot> slots_;  // a power of two of them, at least half of them free
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_DBF_FIELDS_H_
