#include "storage/dbf_fields.h"

#include <cstring>

#include "base/letter_case.h"
#include "common/blanks.h"

namespace customsconv {

std::string_view FieldDescriptor::TrimmedName() const { return Trim(name); }

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
  if (name.size() > kKeySize) return std::nullopt;
  Key key;
  for (std::size_t i = 0; i < kKeySize; ++i)
    key[i] = i < name.size() ? UpperCaseChar(name[i]) : ' ';
  return key;
}

std::size_t FieldNames::SlotOf(const Key& key) const {
  std::uint64_t head = 0;
  std::uint64_t tail = 0;
  std::memcpy(&head, key.data(), sizeof head);
  std::memcpy(&tail, key.data() + sizeof head, kKeySize - sizeof head);
  std::uint64_t hash = (head ^ tail << 29) * 0x9E3779B97F4A7C15ULL;
  hash ^= hash >> 32;
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = static_cast<std::size_t>(hash) & mask;
  while (slots_[at].field >= 0 && slots_[at].key != key) at = (at + 1) & mask;
  return at;
}

}  // namespace customsconv
