#ifndef CUSTOMSCONV_XML_TREE_XML_ARENA_H_
#define CUSTOMSCONV_XML_TREE_XML_ARENA_H_

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "base/lifetime.h"
#include "xml/tree/xml_node.h"

namespace customsconv {

// Storage of one XML tree: nodes and decoded texts, cut from chunks that grow with
// the tree and go with the arena, all at once. Addresses never move.
class XmlArena {
 public:
  explicit XmlArena(std::size_t first_chunk_size) : next_chunk_size_(first_chunk_size) {}
  XmlArena(const XmlArena&) = delete;
  XmlArena& operator=(const XmlArena&) = delete;

  [[nodiscard]] TXMLNode* NewNode() CUSTOMSCONV_LIFETIME_BOUND {
    return new (Take(sizeof(TXMLNode), alignof(TXMLNode))) TXMLNode;
  }
  // Room for `size` bytes of text; GiveBack returns what the text did not need
  // of it, before anything else is taken.
  [[nodiscard]] char* NewText(std::size_t size) CUSTOMSCONV_LIFETIME_BOUND {
    return static_cast<char*>(static_cast<void*>(Take(size, 1)));
  }
  void GiveBack(std::size_t unused) { free_ -= unused; }

 private:
  [[nodiscard]] std::byte* Take(std::size_t size, std::size_t alignment) {
    const std::size_t start = (free_ + alignment - 1) & ~(alignment - 1);
    if (start + size > chunk_size_) return TakeFromNewChunk(size);
    free_ = start + size;
    return chunk_ + start;
  }
  [[nodiscard]] std::byte* TakeFromNewChunk(std::size_t size);

  std::vector<std::unique_ptr<std::byte[]>> chunks_;
  std::byte* chunk_ = nullptr;  // the chunk being filled; aligned for any type
  std::size_t chunk_size_ = 0;
  std::size_t free_ = 0;  // offset of its first free byte
  std::size_t next_chunk_size_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_XML_TREE_XML_ARENA_H_
