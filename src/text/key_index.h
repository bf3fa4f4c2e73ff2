#ifndef CUSTOMSCONV_TEXT_KEY_INDEX_H_
#define CUSTOMSCONV_TEXT_KEY_INDEX_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace customsconv {

// Positions (from 0) of texts, found without regard to letter case.
//
//   KeyIndex names;
//   for (int i = 0; i < basis.Count(); ++i) names.Add(basis.Item(i).name, i);
//   const int position = names.Find("g32");  // -1 when there is no such name
//
// Among equal texts the one that was added first wins. Finding takes constant time and
// allocates nothing.
class KeyIndex {
 public:
  // Makes room for `keys` keys of `bytes` bytes together; the index grows beyond that by itself.
  void Reserve(std::size_t keys, std::size_t bytes = 0);
  void Add(std::string_view key, int position);
  // -1 when the key is not there.
  [[nodiscard]] int Find(std::string_view key) const;
  // A removed key that is added again gets its new position. The key must be there.
  void Remove(std::string_view key);
  void Clear();

 private:
  static constexpr int kAbsent = -1;
  struct Entry {
    std::size_t start;  // of the key in text_
    std::uint32_t size;
    std::int32_t position;  // kAbsent once it was removed
  };
  // With the key's hash beside it, so that other keys on the way are passed over without a
  // look at them.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t entry = 0;  // its number + 1; 0 for a free slot
  };

  // The slot of the key, or the free one where it belongs.
  [[nodiscard]] std::size_t SlotOf(std::string_view key, std::uint32_t hash) const;
  void Rehash(std::size_t slots);

  std::string text_;  // all keys, one behind the other
  std::vector<Entry> entries_;
  // A power of two of them, at least twice as many as entries.
  std::vector<Slot> slots_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_KEY_INDEX_H_
