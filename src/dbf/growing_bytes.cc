// Bytes that grow by realloc, which moves large memory without copying it.

#include "dbf/growing_bytes.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace customsconv {

void GrowingBytes::Resize(std::size_t size) {
  if (size > capacity_) {
    const std::size_t capacity = std::max(size, capacity_ * 2);
    void* const grown = std::realloc(bytes_.get(), capacity);
    if (grown == nullptr) throw std::bad_alloc();
    static_cast<void>(bytes_.release());  // now part of `grown`
    bytes_.reset(static_cast<char*>(grown));
    capacity_ = capacity;
  }
  size_ = size;
}

void GrowingBytes::Overwrite(std::size_t at, std::string_view bytes) {
  if (bytes.empty()) return;
  if (at + bytes.size() > size_) Resize(at + bytes.size());
  std::memcpy(bytes_.get() + at, bytes.data(), bytes.size());
}

void GrowingBytes::Erase(std::size_t at, std::size_t count) {
  if (count == 0) return;
  std::memmove(bytes_.get() + at, bytes_.get() + at + count, size_ - at - count);
  size_ -= count;
}

}  // namespace customsconv
