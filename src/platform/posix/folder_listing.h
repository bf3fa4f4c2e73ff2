#ifndef CUSTOMSCONV_PLATFORM_POSIX_FOLDER_LISTING_H_
#define CUSTOMSCONV_PLATFORM_POSIX_FOLDER_LISTING_H_

#include <dirent.h>

#include <memory>
#include <string>

#include "base/lifetime.h"

namespace customsconv::posix {

// The entries of a folder, one by one, in the order of the system.
class FolderListing {
 public:
  // A folder that cannot be read has no entries.
  explicit FolderListing(const std::string& folder) : stream_(::opendir(folder.c_str())) {}

  // The next entry, valid until the next call; null at the end.
  [[nodiscard]] const dirent* Next() CUSTOMSCONV_LIFETIME_BOUND {
    return stream_ ? ::readdir(stream_.get()) : nullptr;
  }

 private:
  struct Closer {
    void operator()(DIR* stream) const { ::closedir(stream); }
  };
  std::unique_ptr<DIR, Closer> stream_;
};

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_FOLDER_LISTING_H_
