#ifndef CUSTOMSCONV_DBF_GROWING_BYTES_H_
#define CUSTOMSCONV_DBF_GROWING_BYTES_H_

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "base/lifetime.h"

namespace customsconv {

// Bytes that grow at their end in amortised constant time a byte. Unlike a std::string they
// grow in place where the system can move pages, so that a table of a hundred megabytes
// is neither copied nor held twice on its way there.
class GrowingBytes {
 public:
  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] char* data() CUSTOMSCONV_LIFETIME_BOUND { return bytes_.get(); }
  [[nodiscard]] const char* data() const CUSTOMSCONV_LIFETIME_BOUND { return bytes_.get(); }
  [[nodiscard]] std::string_view view() const CUSTOMSCONV_LIFETIME_BOUND {
    return {bytes_.get(), size_};
  }

  // Bytes that are added have no value yet. Throws std::bad_alloc.
  void Resize(std::size_t size);
  // Puts `bytes` at `at`, which is at most size(); what reaches beyond the end is added.
  void Overwrite(std::size_t at, std::string_view bytes);
  // Removes `count` bytes from `at` on; they must be there.
  void Erase(std::size_t at, std::size_t count);

 private:
  struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
  };
  std::unique_ptr<char, Free> bytes_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_GROWING_BYTES_H_
