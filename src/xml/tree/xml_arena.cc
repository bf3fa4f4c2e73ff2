// Chunks double in size up to one megabyte: a small document costs one of them, a large one few.

#include "xml/tree/xml_arena.h"

#include <algorithm>

namespace customsconv {

namespace {

constexpr std::size_t kMaxChunkSize = std::size_t{1} << 20;

}  // namespace

std::byte* XmlArena::TakeFromNewChunk(std::size_t size) {
  chunk_size_ = std::max(size, next_chunk_size_);
  next_chunk_size_ = std::min(2 * next_chunk_size_, kMaxChunkSize);
  chunks_.push_back(std::make_unique_for_overwrite<std::byte[]>(chunk_size_));
  chunk_ = chunks_.back().get();
  free_ = size;
  return chunk_;
}

}  // namespace customsconv
