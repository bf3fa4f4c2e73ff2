#ifndef CUSTOMSCONV_DBF_DBF_IMAGE_H_
#define CUSTOMSCONV_DBF_DBF_IMAGE_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/lifetime.h"
#include "base/short_text.h"
#include "dbf/growing_bytes.h"
#include "platform/files.h"

namespace customsconv {

struct TableLayout;

// Failure times beyond all clocks: no failed write is pending.
inline constexpr DateTime kNoFailureSinceLoad = 100000.0;
inline constexpr DateTime kNoFailureSinceWrite = 1000000.0;

// The bytes of one table file in memory, and what the cache knows about the file.
struct TDbfMemoryStream {
  GrowingBytes bytes;
  std::string path;                    // the file, by the name that opened it first
  ShortText name;                      // the same in upper case, for messages and order
  std::string identity;                // Files::Identity of the file
  std::vector<std::string> spellings;  // full names that are known to lead to it
  FileStamp file_age = kNoStamp;       // of the file when it was loaded or last written
  DateTime failure_time = kNoFailureSinceLoad;
  bool changed = false;                       // stands in the changed list
  std::unique_ptr<FileSeries> series;         // once a flush of several wrote the file
  std::size_t same_end = 0;                   // records up to here are as they were last written
  std::shared_ptr<const TableLayout> layout;  // once the image was found to be a table

  // The bytes of records from `at` on are about to change.
  void Touch(std::size_t at) { same_end = std::min(same_end, at); }
};

// The whole content of a file. Throws FileError, also when memory does not hold it.
[[nodiscard]] GrowingBytes ReadWhole(FileStream& file, std::string_view path);

// Where the bytes of an open table are: in an image of the cache, in the file itself when that
// is large and was only read so far, or nowhere once the image was dropped. Only an image
// is ever changed.
class TableBytes {
 public:
  TableBytes() = default;
  // The image must outlive its use here: the cache detaches its users first.
  explicit TableBytes(TDbfMemoryStream& image) : image_(&image) {}
  explicit TableBytes(std::unique_ptr<FileStream> file) : file_(std::move(file)) {}

  [[nodiscard]] bool attached() const { return image_ != nullptr || file_ != nullptr; }
  [[nodiscard]] TDbfMemoryStream* image() const { return image_; }
  [[nodiscard]] FileStream* file() const CUSTOMSCONV_LIFETIME_BOUND { return file_.get(); }
  [[nodiscard]] std::int64_t Size() const;
  // False when the table does not hold so many bytes from `at` on. Throws FileError.
  [[nodiscard]] bool Read(std::int64_t at, char* to, std::size_t count) const;

 private:
  TDbfMemoryStream* image_ = nullptr;
  std::unique_ptr<FileStream> file_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_DBF_IMAGE_H_
