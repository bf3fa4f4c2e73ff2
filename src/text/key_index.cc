// Keys hash into a table of slots that is never more than half full; equal hashes step on to the
// next free slot. A removed key keeps its slot, without a position.

#include "text/key_index.h"

#include <bit>
#include <utility>

#include "base/letter_case.h"

namespace customsconv {
namespace {

constexpr std::size_t kFirstSlots = 8;

std::uint32_t HashOf(std::string_view key) { return static_cast<std::uint32_t>(NoCaseHash{}(key)); }

}  // namespace

void KeyIndex::Reserve(std::size_t keys, std::size_t bytes) {
  entries_.reserve(keys);
  text_.reserve(bytes);
  const std::size_t slots = std::bit_ceil(keys * 2 + 1);
  if (slots > slots_.size()) Rehash(slots);
}

void KeyIndex::Add(std::string_view key, int position) {
  if (slots_.size() < (entries_.size() + 1) * 2) {
    Rehash(slots_.empty() ? kFirstSlots : slots_.size() * 2);
  }
  const std::uint32_t hash = HashOf(key);
  Slot& slot = slots_[SlotOf(key, hash)];
  if (slot.entry != 0) {
    std::int32_t& known = entries_[slot.entry - 1].position;
    if (known == kAbsent) known = position;
    return;
  }
  entries_.push_back({text_.size(), static_cast<std::uint32_t>(key.size()), position});
  text_ += key;
  slot = {hash, static_cast<std::uint32_t>(entries_.size())};
}

int KeyIndex::Find(std::string_view key) const {
  if (entries_.empty()) return kAbsent;
  const Slot& slot = slots_[SlotOf(key, HashOf(key))];
  return slot.entry == 0 ? kAbsent : entries_[slot.entry - 1].position;
}

void KeyIndex::Remove(std::string_view key) {
  entries_[slots_[SlotOf(key, HashOf(key))].entry - 1].position = kAbsent;
}

void KeyIndex::Clear() {
  text_.clear();
  entries_.clear();
  slots_.clear();
}

std::size_t KeyIndex::SlotOf(std::string_view key, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
    const Slot& slot = slots_[i];
    if (slot.entry == 0) return i;
    if (slot.hash != hash) continue;
    const Entry& entry = entries_[slot.entry - 1];
    if (SameTextRu(std::string_view(text_).substr(entry.start, entry.size), key)) return i;
  }
}

void KeyIndex::Rehash(std::size_t slots) {
  const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(slots));
  for (const Slot& slot : old) {
    if (slot.entry == 0) continue;
    std::size_t i = slot.hash & (slots - 1);
    while (slots_[i].entry != 0) i = (i + 1) & (slots - 1);
    slots_[i] = slot;
  }
}

}  // namespace customsconv
