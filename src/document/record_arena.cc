// A bump allocator with lists of released blocks by size.

#include "document/record_arena.h"

#include <algorithm>

namespace customsconv {
namespace {

// Chunks double from the first size, so that a small document stays small.
constexpr std::size_t kFirstChunk = 8 * 1024;
constexpr std::size_t kLargestChunk = 1024 * 1024;

}  // namespace

void* RecordArena::Allocate(std::size_t size) {
  if (size > kLargestSmall) {
    std::unique_ptr<std::byte[]> block(new std::byte[size]);
    void* const address = block.get();
    large_.emplace(address, std::move(block));
    return address;
  }
  const std::size_t granules = (size + kGranule - 1) / kGranule;
  if (FreeBlock* const block = released_[granules]) {
    released_[granules] = block->next;
    return block;
  }
  const std::size_t rounded = granules * kGranule;
  if (static_cast<std::size_t>(free_end_ - free_begin_) < rounded) StartChunk();
  return std::exchange(free_begin_, free_begin_ + rounded);
}

void RecordArena::Release(void* block, std::size_t size) {
  if (size > kLargestSmall) {
    large_.erase(block);
    return;
  }
  FreeBlock*& first = released_[(size + kGranule - 1) / kGranule];
  first = new (block) FreeBlock{first};
}

void RecordArena::Clear() {
  large_.clear();
  chunks_.clear();
  released_.fill(nullptr);
  free_begin_ = free_end_ = nullptr;
  chunk_size_ = 0;
}

void RecordArena::StartChunk() {
  chunk_size_ = std::clamp(chunk_size_ * 2, kFirstChunk, kLargestChunk);
  chunks_.emplace_back(new std::byte[chunk_size_]);
  free_begin_ = chunks_.back().get();
  free_end_ = free_begin_ + chunk_size_;
}

}  // namespace customsconv
