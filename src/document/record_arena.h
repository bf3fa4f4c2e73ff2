#ifndef CUSTOMSCONV_DOCUMENT_RECORD_ARENA_H_
#define CUSTOMSCONV_DOCUMENT_RECORD_ARENA_H_

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/lifetime.h"

namespace customsconv {

// Storage of one document's records and values. All of it goes at once, without a
// walk over what is stored: a tree of records may be as deep as its input.
//
// Small blocks are cut from chunks and used again once released; large ones are
// allocated and freed one by one.
class RecordArena {
 public:
  RecordArena() = default;
  RecordArena(const RecordArena&) = delete;
  RecordArena& operator=(const RecordArena&) = delete;

  // `size` bytes above 0, aligned for pointers.
  [[nodiscard]] void* Allocate(std::size_t size) CUSTOMSCONV_LIFETIME_BOUND;
  // Gives back a block of `size` bytes that Allocate returned.
  void Release(void* block, std::size_t size);
  // Gives back everything.
  void Clear();

  // What is made here is never destroyed, only forgotten.
  template <class T, class... Arguments>
  [[nodiscard]] T* New(Arguments&&... arguments) CUSTOMSCONV_LIFETIME_BOUND {
    static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= alignof(void*));
    return new (Allocate(sizeof(T))) T(std::forward<Arguments>(arguments)...);
  }
  // `count` null pointers.
  template <class T>
  [[nodiscard]] T** NewPointers(std::size_t count) CUSTOMSCONV_LIFETIME_BOUND {
    T** pointers = static_cast<T**>(Allocate(count * sizeof(T*)));
    for (std::size_t i = 0; i < count; ++i) new (pointers + i) T*(nullptr);
    return pointers;
  }

 private:
  struct FreeBlock {
    FreeBlock* next;
  };
  static constexpr std::size_t kGranule = alignof(void*) < 8 ? 8 : alignof(void*);
  static constexpr std::size_t kLargestSmall = 1024;

  void StartChunk();

  std::vector<std::unique_ptr<std::byte[]>> chunks_;
  std::size_t chunk_size_ = 0;
  std::byte* free_begin_ = nullptr;  // the unused rest of the last chunk
  std::byte* free_end_ = nullptr;
  std::array<FreeBlock*, kLargestSmall / kGranule + 1> released_{};  // by size in granules
  std::unordered_map<void*, std::unique_ptr<std::byte[]>> large_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DOCUMENT_RECORD_ARENA_H_
