#ifndef CUSTOMSCONV_DOCUMENT_RECORD_H_
#define CUSTOMSCONV_DOCUMENT_RECORD_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "catalogue/basis.h"
#include "document/record_arena.h"

namespace customsconv {

class TDocFieldList;

// One text in an arena: the bytes follow the header. Null stands for the empty text.
struct StoredText {
  std::uint32_t size;
  std::uint32_t capacity;

  [[nodiscard]] std::string_view view() const CUSTOMSCONV_LIFETIME_BOUND {
    return {reinterpret_cast<const char*>(this + 1), size};
  }
};

// The records of one block inside one record. Record numbers count from 1. References to
// records stay good while the list grows.
class RecordList {
 public:
  // The arena holds the records and all that hangs on them, and must outlive the list.
  RecordList(const TBasis& basis, RecordArena& arena) : basis_(&basis), arena_(&arena) {}

  [[nodiscard]] int Count() const { return count_; }
  // `number` is from 1 to Count().
  [[nodiscard]] TDocFieldList& Record(int number) const CUSTOMSCONV_LIFETIME_BOUND {
    return *records_[number - 1];
  }
  // Adds a record with empty slots behind the last one, labelled `label`.
  TDocFieldList& Append(std::string_view label) CUSTOMSCONV_LIFETIME_BOUND;
  TDocFieldList& Append(int label) CUSTOMSCONV_LIFETIME_BOUND;
  // Puts a new record in front of record `number` (behind the last one for
  // Count() + 1). Throws ListIndexError for a number beyond.
  TDocFieldList& Insert(int number, std::string_view label) CUSTOMSCONV_LIFETIME_BOUND;
  TDocFieldList& Insert(int number, int label) CUSTOMSCONV_LIFETIME_BOUND;
  [[nodiscard]] std::string Label(int number) const;
  [[nodiscard]] const TBasis& basis() const { return *basis_; }
  // The record itself stays readable until the document is released.
  void Remove(int number);

 private:
  void Grow();

  const TBasis* basis_;
  RecordArena* arena_;
  TDocFieldList** records_ = nullptr;
  std::int32_t count_ = 0;
  std::int32_t capacity_ = 0;
};

// One record of a level: one text per entry of the level's basis. The text of a
// block entry is the block's name; its records hang on it.
//
// A record is small until something is stored in it: its slots come in pages, made
// when first written to, so that wide levels with few values cost little.
class TDocFieldList {
 public:
  // A record without slots. Basis and arena must outlive it.
  TDocFieldList(const TBasis& basis, RecordArena& arena) : basis_(&basis), arena_(&arena) {}

  [[nodiscard]] const TBasis& Basis() const { return *basis_; }
  // Number of slots: 0 until Fill, then the basis's count.
  [[nodiscard]] int Count() const { return count_; }
  // Gives the record its slots: empty values, block entries holding their names.
  // A record that has them keeps what is stored.
  void Fill() { count_ = basis_->Count(); }
  // The stored text; `position` is below Count(). Good until the slot is written to.
  [[nodiscard]] std::string_view Text(int position) const CUSTOMSCONV_LIFETIME_BOUND;
  // `text` may be a part of the text that is stored.
  void SetText(int position, std::string_view text);
  // Adds to the stored text in amortised constant time a byte.
  void AppendText(int position, std::string_view text);
  // Null when the entry has no record list (yet) or is no block.
  [[nodiscard]] RecordList* Records(int position) const CUSTOMSCONV_LIFETIME_BOUND;
  // The entry's record list, made when absent. The entry must be a block.
  RecordList& EnsureRecords(int position) CUSTOMSCONV_LIFETIME_BOUND;

  // Row (from 1) of the table that the record came from or was last written to;
  // 0 without one.
  std::int32_t RecNo = 0;

 private:
  friend class RecordList;

  // What hangs on a block entry. `text` is null while the entry's text is the block's name.
  struct BlockSlot {
    RecordList* list;
    StoredText* text;
  };
  union Slot {
    StoredText* text;  // of a plain entry
    BlockSlot* block;  // of a block entry
  };
  static constexpr int kSlotsPerPage = 16;

  [[nodiscard]] bool IsBlock(int position) const { return basis_->Item(position).is_block; }
  // Null while nothing was stored on the slot's page.
  [[nodiscard]] const Slot* FindSlot(int position) const;
  Slot& EnsureSlot(int position);
  BlockSlot& EnsureBlockSlot(int position);
  // Where the text of the entry is stored.
  StoredText*& TextPlace(int position);

  const TBasis* basis_;
  RecordArena* arena_;
  Slot** pages_ = nullptr;
  std::int32_t count_ = 0;
  std::int32_t label_ = 0;  // where label_text_ is null
  const StoredText* label_text_ = nullptr;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_RECORD_H_
