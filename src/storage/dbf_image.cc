#include "storage/dbf_image.h"

#include <algorithm>
#include <cstring>

namespace customsconv {

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

void TableBytes::Write(std::int64_t at, std::string_view bytes) {
  if (image_ != nullptr) {
    image_->bytes.Overwrite(std::min(static_cast<std::size_t>(at), image_->bytes.size()), bytes);
  } else if (file_) {
    file_->Seek(at, SeekOrigin::kBegin);
    file_->Write(bytes.data(), bytes.size());
  }
}

void TableBytes::Truncate(std::int64_t size) {
  if (image_ != nullptr) {
    image_->bytes.Resize(static_cast<std::size_t>(size));
  } else if (file_) {
    file_->Truncate(size);
  }
}

}  // namespace customsconv
