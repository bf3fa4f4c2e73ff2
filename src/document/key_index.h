#ifndef CUSTOMSCONV_DOCUMENT_KEY_INDEX_H_
#define CUSTOMSCONV_DOCUMENT_KEY_INDEX_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace customsconv {

// Positions of texts, found without regard to letter case. Among equal texts the one that was
// added first wins. Finding takes constant time and allocates nothing.
class KeyIndex {
 public:
  // Makes room for `keys` keys; the index grows beyond that by itself.
  void Reserve(std::size_t keys);
  void Add(std::string_view key, int position);
  // -1 when the key was never added.
  [[nodiscard]] int Find(std::string_view key) const;
  void Clear();

 private:
  struct Entry {
    std::size_t hash;
    std::size_t start;  // of the key in text_
    std::uint32_t size;
    std::int32_t position;
  };

  // Slot of the key, or the free slot where it belongs.
  [[nodiscard]] std::size_t SlotOf(std::string_view key, std::size_t hash) const;
  void Rehash(std::size_t slots);

  std::string text_;  // all keys, one behind the other
  std::vector<Entry> entries_;
  // Number of an entry + 1, or 0 for a free slot. The size is a power of two and at least
  // twice the number of entries.
  std::vector<std::uint32_t> slots_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_KEY_INDEX_H_
