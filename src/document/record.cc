// Slots in pages, texts and lists in the arena; a slot that was never written takes no room.

#include "document/record.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <limits>

#include "base/error.h"

namespace customsconv {
namespace {

constexpr std::size_t kLongestText = std::numeric_limits<std::uint32_t>::max() / 2;
// A text this much shorter than its room gives the room back.
constexpr std::size_t kRoomToKeep = 256;

char* BytesOf(StoredText* text) { return reinterpret_cast<char*>(text + 1); }

StoredText* NewText(std::size_t capacity, RecordArena& arena) {
  if (capacity > kLongestText) throw Error("A value is longer than 2 GB");
  // What rounding up to whole pointers would waste belongs to the text.
  constexpr std::size_t kUnit = alignof(void*);
  const std::size_t rounded = (capacity + kUnit - 1) / kUnit * kUnit;
  void* const block = arena.Allocate(sizeof(StoredText) + rounded);
  return new (block) StoredText{0, static_cast<std::uint32_t>(rounded)};
}

void ReleaseText(StoredText* text, RecordArena& arena) {
  if (text != nullptr) arena.Release(text, sizeof(StoredText) + text->capacity);
}

bool HasFittingRoom(const StoredText* text, std::size_t size) {
  return text != nullptr && size <= text->capacity && text->capacity / 2 <= size + kRoomToKeep;
}

void Assign(StoredText*& place, std::string_view text, RecordArena& arena) {
  StoredText* target = place;
  if (!HasFittingRoom(target, text.size())) target = NewText(text.size(), arena);
  if (!text.empty()) std::memmove(BytesOf(target), text.data(), text.size());
  target->size = static_cast<std::uint32_t>(text.size());
  if (target != place) ReleaseText(std::exchange(place, target), arena);
}

void AppendTo(StoredText*& place, std::string_view tail, RecordArena& arena) {
  const std::string_view head = place == nullptr ? std::string_view() : place->view();
  const std::size_t size = head.size() + tail.size();
  if (place == nullptr || size > place->capacity) {
    StoredText* const longer =
        NewText(head.empty() ? size : std::max(size, 2 * head.size()), arena);
    if (!head.empty()) std::memcpy(BytesOf(longer), head.data(), head.size());
    std::memcpy(BytesOf(longer) + head.size(), tail.data(), tail.size());
    ReleaseText(std::exchange(place, longer), arena);
  } else {
    std::memcpy(BytesOf(place) + head.size(), tail.data(), tail.size());
  }
  place->size = static_cast<std::uint32_t>(size);
}

}  // namespace

// ---- RecordList

TDocFieldList& RecordList::Append(std::string_view label) { return Insert(count_ + 1, label); }

TDocFieldList& RecordList::Append(int label) { return Insert(count_ + 1, label); }

TDocFieldList& RecordList::Insert(int number, std::string_view label) {
  TDocFieldList& record = Insert(number, 0);
  StoredText* text = nullptr;
  Assign(text, label, *arena_);
  record.label_text_ = text;
  return record;
}

TDocFieldList& RecordList::Insert(int number, int label) {
  if (number < 1 || number > count_ + 1) throw ListIndexError(number - 1);
  TDocFieldList* const record = arena_->New<TDocFieldList>(*basis_, *arena_);
  record->Fill();
  record->label_ = label;
  if (count_ == capacity_) Grow();
  TDocFieldList** const place = records_ + number - 1;
  std::copy_backward(place, records_ + count_, records_ + count_ + 1);
  *place = record;
  ++count_;
  return *record;
}

void RecordList::Grow() {
  constexpr std::int32_t kFirstCapacity = 2;
  const std::int32_t capacity = std::max(kFirstCapacity, capacity_ * 2);
  auto** const records = arena_->NewPointers<TDocFieldList>(static_cast<std::size_t>(capacity));
  std::copy(records_, records_ + count_, records);
  if (records_ != nullptr) {
    arena_->Release(records_, static_cast<std::size_t>(capacity_) * sizeof(TDocFieldList*));
  }
  records_ = records;
  capacity_ = capacity;
}

std::string RecordList::Label(int number) const {
  const TDocFieldList& record = Record(number);
  return record.label_text_ == nullptr ? std::to_string(record.label_)
                                       : std::string(record.label_text_->view());
}

void RecordList::Remove(int number) {
  assert(number >= 1 && number <= count_);
  std::copy(records_ + number, records_ + count_, records_ + number - 1);
  --count_;
}

// ---- TDocFieldList

const TDocFieldList::Slot* TDocFieldList::FindSlot(int position) const {
  assert(position >= 0 && position < count_);
  if (pages_ == nullptr) return nullptr;
  const Slot* const page = pages_[position / kSlotsPerPage];
  return page == nullptr ? nullptr : page + position % kSlotsPerPage;
}

TDocFieldList::Slot& TDocFieldList::EnsureSlot(int position) {
  assert(position >= 0 && position < count_);
  if (pages_ == nullptr) {
    const int pages = (count_ + kSlotsPerPage - 1) / kSlotsPerPage;
    pages_ = arena_->NewPointers<Slot>(static_cast<std::size_t>(pages));
  }
  Slot*& page = pages_[position / kSlotsPerPage];
  if (page == nullptr) {
    page = static_cast<Slot*>(arena_->Allocate(kSlotsPerPage * sizeof(Slot)));
    for (int i = 0; i < kSlotsPerPage; ++i) new (page + i) Slot{nullptr};
  }
  return page[position % kSlotsPerPage];
}

TDocFieldList::BlockSlot& TDocFieldList::EnsureBlockSlot(int position) {
  BlockSlot*& block = EnsureSlot(position).block;
  if (block == nullptr) block = arena_->New<BlockSlot>(BlockSlot{nullptr, nullptr});
  return *block;
}

std::string_view TDocFieldList::Text(int position) const {
  const Slot* const slot = FindSlot(position);
  const TFieldInfo& entry = basis_->Item(position);
  if (entry.is_block) {
    const bool renamed = slot != nullptr && slot->block != nullptr && slot->block->text != nullptr;
    return renamed ? slot->block->text->view() : std::string_view(entry.name);
  }
  return slot == nullptr || slot->text == nullptr ? std::string_view() : slot->text->view();
}

StoredText*& TDocFieldList::TextPlace(int position) {
  return IsBlock(position) ? EnsureBlockSlot(position).text : EnsureSlot(position).text;
}

void TDocFieldList::SetText(int position, std::string_view text) {
  if (text.empty() && Text(position).empty()) return;
  Assign(TextPlace(position), text, *arena_);
}

void TDocFieldList::AppendText(int position, std::string_view text) {
  if (text.empty()) return;
  StoredText*& place = TextPlace(position);
  if (place == nullptr && IsBlock(position)) Assign(place, basis_->Item(position).name, *arena_);
  AppendTo(place, text, *arena_);
}

RecordList* TDocFieldList::Records(int position) const {
  if (!IsBlock(position)) return nullptr;
  const Slot* const slot = FindSlot(position);
  return slot == nullptr || slot->block == nullptr ? nullptr : slot->block->list;
}

RecordList& TDocFieldList::EnsureRecords(int position) {
  assert(IsBlock(position));
  BlockSlot& slot = EnsureBlockSlot(position);
  if (slot.list == nullptr) {
    slot.list = arena_->New<RecordList>(*basis_->Item(position).block, *arena_);
  }
  return *slot.list;
}

}  // namespace customsconv
