#ifndef CUSTOMSCONV_DBF_DBF_IMAGE_H_
#define CUSTOMSCONV_DBF_DBF_IMAGE_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/lifetime.h"
#include "base/short_text.h"
#include "dbf/growing_bytes.h"
#include "dbf/transaction.h"
#include "platform/files.h"

namespace customsconv {

struct TableLayout;

// Failure times beyond all clocks: no failed write is pending.
inline constexpr DateTime kNoFailureSinceLoad = 100000.0;
inline constexpr DateTime kNoFailureSinceWrite = 1000000.0;

// A file that is read by blocks, so that neighbouring records cost one look at it.
class BufferedFile {
 public:
  BufferedFile() = default;
  explicit BufferedFile(std::unique_ptr<FileStream> file) : file_(std::move(file)) {}

  // Null when there is none.
  [[nodiscard]] FileStream* stream() const { return file_.get(); }
  // False when the file does not hold so many bytes from `at` on. Throws FileError.
  bool Read(std::int64_t at, char* to, std::size_t count);
  // The file has been written to.
  void Forget() { block_.clear(); }

 private:
  std::unique_ptr<FileStream> file_;
  std::string block_;
  std::int64_t block_at_ = 0;
};

// The bytes of one table as a run of the program sees them: all in memory, or, of a larger table,
// what was changed and added, over the file. Knows which places differ from the file.
struct TDbfMemoryStream {
 public:
  // A table in memory as a whole.
  explicit TDbfMemoryStream(GrowingBytes whole);
  // The table in `file`, of which what stands behind its records at `records_end` is in memory.
  TDbfMemoryStream(BufferedFile file, std::int64_t records_end, GrowingBytes rest,
                   std::uint32_t count);

  [[nodiscard]] std::int64_t size() const;
  [[nodiscard]] std::uint32_t record_count() const { return count_; }
  // False when the table does not hold so many bytes from `at` on. Throws FileError.
  [[nodiscard]] bool Read(std::int64_t at, char* to, std::size_t count);

  // `at` is a record's place or the end; what reaches beyond the end is added.
  void Overwrite(std::int64_t at, std::string_view record);
  // Removes `count` bytes at `at` and what follows the records, which end at `records_end` then,
  // and puts `end` there.
  void Erase(std::int64_t at, std::size_t count, std::int64_t records_end, std::string_view end);
  void SetRecordCount(std::uint32_t count);

  // What the file, open for writing, lacks; `all`: as if it held nothing. Views into the table,
  // valid until it is changed.
  [[nodiscard]] std::vector<TableChange::Piece> Changes(bool all);
  // The file holds it all now. A large table is left to the file.
  void Settle(std::int64_t records_end);
  // Holds everything in memory from now on.
  void BecomeWhole();

  // From now on changes can be undone, until the next call.
  void StartUndo();
  void Undo();

  // What the cache knows about the file.
  std::string path;                    // by the name that opened it first
  ShortText name;                      // the same in upper case, for messages and order
  std::string identity;                // Files::Identity of the file
  std::string folder;                  // the same of the file that its folder is locked by
  std::vector<std::string> spellings;  // full names that are known to lead to it
  FileStamp file_age = kNoStamp;       // of the file when it was loaded or last written
  DateTime failure_time = kNoFailureSinceLoad;
  bool changed = false;                       // stands in the changed list
  bool late = false;                          // a flush could not write it
  bool replaces = false;                      // the file is gone, or another one by now
  std::string note;                           // what the rows that wait belong to
  std::uint64_t save = 0;                     // in which it was changed last
  std::shared_ptr<const TableLayout> layout;  // once the image was found to be a table
  BufferedFile file;                          // of what is not in memory, or to write to
  bool writable = false;                      // `file` is open for writing
  bool spare_room = false;                    // was reserved for rows that were given up

 private:
  void MarkDirty(std::int64_t at, std::int64_t end);
  void PutRow(std::int64_t at, std::string_view row);

  GrowingBytes tail_;          // what is in memory for good
  std::int64_t tail_at_ = 0;   // where that begins
  std::map<std::int64_t, std::string> rows_;         // changed ones before it
  std::map<std::int64_t, std::int64_t> dirty_;       // places in it that differ from the file
  std::uint32_t count_ = 0;
  std::string count_bytes_;

  struct Old {
    std::int64_t at;
    std::string bytes;
  };
  std::vector<Old> undo_;
  std::int64_t undo_size_ = -1;  // -1: nothing is noted
  std::uint32_t undo_count_ = 0;
  bool was_changed_ = false;
};

// The whole content of a file. Throws FileError, also when memory does not hold it.
[[nodiscard]] GrowingBytes ReadWhole(FileStream& file, std::string_view path);

// Where the bytes of an open table are: in an image of the cache, in the file itself when that
// was only read so far, or nowhere once the image was dropped. Only an image is ever changed.
class TableBytes {
 public:
  TableBytes() = default;
  // The image must outlive its use here: the cache detaches its users first.
  explicit TableBytes(TDbfMemoryStream& image) : image_(&image) {}
  explicit TableBytes(std::unique_ptr<FileStream> file) : file_(std::move(file)) {}

  [[nodiscard]] bool attached() const { return image_ != nullptr || file() != nullptr; }
  [[nodiscard]] TDbfMemoryStream* image() const { return image_; }
  [[nodiscard]] FileStream* file() const CUSTOMSCONV_LIFETIME_BOUND { return file_.stream(); }
  [[nodiscard]] BufferedFile TakeFile() { return std::move(file_); }
  [[nodiscard]] std::int64_t Size() const;
  // False when the table does not hold so many bytes from `at` on. Throws FileError.
  [[nodiscard]] bool Read(std::int64_t at, char* to, std::size_t count) const;

 private:
  TDbfMemoryStream* image_ = nullptr;
  mutable BufferedFile file_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_DBF_DBF_IMAGE_H_
