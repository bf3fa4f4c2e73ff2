#include "dbf/dbf_fields.h"

#include "base/letter_case.h"
#include "text/blanks.h"

namespace customsconv {
namespace {

constexpr std::size_t kMaxNameSize = 11;
constexpr std::size_t kWordSize = 8;

}  // namespace

std::string_view FieldDescriptor::TrimmedName() const { return Trim(name); }

// A table of field numbers by upper-case names, open addressing, at most half full. Of equal names
// the last one stays.
FieldNames::FieldNames(const TDescrs& fields) {
  std::size_t size = 8;
  while (size < 2 * fields.size()) size *= 2;
  slots_.resize(size);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::optional<Key> key = KeyOf(fields[i].name);
    if (!key) continue;
    slots_[SlotOf(*key)] = {*key, static_cast<int>(i)};
  }
}

int FieldNames::Find(std::string_view name) const {
  const std::optional<Key> key = KeyOf(name);
  if (!key || slots_.empty()) return -1;
  return slots_[SlotOf(*key)].field;
}

std::optional<FieldNames::Key> FieldNames::KeyOf(std::string_view name) {
  name = Trim(name);
  if (name.size() > kMaxNameSize) return std::nullopt;
  Key key;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const auto byte =
        static_cast<std::uint64_t>(static_cast<unsigned char>(UpperCaseChar(name[i])));
    (i < kWordSize ? key.head : key.tail) |= byte << 8 * (i % kWordSize);
  }
  return key;
}

std::size_t FieldNames::SlotOf(const Key& key) const {
  std::uint64_t hash = (key.head ^ key.tail << 29) * 0x9E3779B97F4A7C15ULL;
  hash ^= hash >> 32;
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = static_cast<std::size_t>(hash) & mask;
  while (slots_[at].field >= 0 && slots_[at].key != key) at = (at + 1) & mask;
  return at;
}

}  // namespace customsconv
