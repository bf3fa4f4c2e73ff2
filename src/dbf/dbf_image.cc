#include "dbf/dbf_image.h"

#include <cstring>
#include <new>
#include <utility>

#include "base/cp1251_literal.h"

namespace customsconv {

GrowingBytes ReadWhole(FileStream& file, std::string_view path) {
  const std::int64_t size = file.Size();
  GrowingBytes bytes;
  try {
    if (!std::in_range<std::size_t>(size)) throw std::bad_alloc();
    bytes.Resize(static_cast<std::size_t>(size));
  } catch (const std::bad_alloc&) {
    throw FileError(FileError::Kind::kRead, path, "не хватает памяти"_cp1251);
  }
  file.Seek(0, SeekOrigin::kBegin);
  bytes.Resize(file.Read(bytes.data(), bytes.size()));
  return bytes;
}

std::int64_t TableBytes::Size() const {
  if (image_ != nullptr) return static_cast<std::int64_t>(image_->bytes.size());
  return file_ ? file_->Size() : 0;
}

bool TableBytes::Read(std::int64_t at, char* to, std::size_t count) const {
  if (image_ != nullptr) {
    const auto start = static_cast<std::size_t>(at);
    if (start > image_->bytes.size() || image_->bytes.size() - start < count) return false;
    std::memcpy(to, image_->bytes.data() + start, count);
    return true;
  }
  if (!file_) return false;
  file_->Seek(at, SeekOrigin::kBegin);
  return file_->Read(to, count) == count;
}

}  // namespace customsconv
