#include "document/key_index.h"

#include <bit>

#include "base/letter_case.h"

namespace customsconv {
namespace {

constexpr std::size_t kFirstSlots = 8;

}  // namespace

void KeyIndex::Reserve(std::size_t keys) {
  entries_.reserve(keys);
  const std::size_t slots = std::bit_ceil(keys * 2 + 1);
  if (slots > slots_.size()) Rehash(slots);
}

void KeyIndex::Add(std::string_view key, int position) {
  if (slots_.size() < (entries_.size() + 1) * 2) {
    Rehash(slots_.empty() ? kFirstSlots : slots_.size() * 2);
  }
  const std::size_t hash = NoCaseHash{}(key);
  std::uint32_t& slot = slots_[SlotOf(key, hash)];
  if (slot != 0) return;  // an equal key stands before this one
  entries_.push_back({hash, text_.size(), static_cast<std::uint32_t>(key.size()), position});
  text_ += key;
  slot = static_cast<std::uint32_t>(entries_.size());
}

int KeyIndex::Find(std::string_view key) const {
  if (entries_.empty()) return -1;
  const std::uint32_t slot = slots_[SlotOf(key, NoCaseHash{}(key))];
  return slot == 0 ? -1 : entries_[slot - 1].position;
}

void KeyIndex::Clear() {
  text_.clear();
  entries_.clear();
  slots_.clear();
}

std::size_t KeyIndex::SlotOf(std::string_view key, std::size_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t i = hash & mask;
  while (slots_[i] != 0) {
    const Entry& entry = entries_[slots_[i] - 1];
    if (entry.hash == hash &&
        SameTextRu(std::string_view(text_).substr(entry.start, entry.size), key)) {
      break;
    }
    i = (i + 1) & mask;
  }
  return i;
}

void KeyIndex::Rehash(std::size_t slots) {
  slots_.assign(slots, 0);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    std::size_t slot = entries_[i].hash & (slots - 1);
    while (slots_[slot] != 0) slot = (slot + 1) & (slots - 1);
    slots_[slot] = static_cast<std::uint32_t>(i + 1);
  }
}

}  // namespace customsconv
