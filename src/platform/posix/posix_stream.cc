// An open file over its descriptor. Share modes are marks on the file, see share_locks.h.

#include "platform/posix/posix_stream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/share_locks.h"
#include "platform/posix/system_error.h"

namespace customsconv::posix {
namespace {

using Kind = FileError::Kind;

bool Truncate(int file, std::int64_t size) {
  int result = 0;
  do {
    result = ::ftruncate(file, size);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

class PosixStream : public FileStream {
 public:
  PosixStream(FileDescriptor file, std::string_view path) : file_(std::move(file)), path_(path) {}

  std::size_t Read(void* to, std::size_t count) override {
    const std::ptrdiff_t got = file_.Read(static_cast<char*>(to), count);
    if (got < 0) Fail(Kind::kRead);
    return static_cast<std::size_t>(got);
  }

  void Write(const void* from, std::size_t count) override {
    if (!file_.Write({static_cast<const char*>(from), count})) Fail(Kind::kWrite);
  }

  std::int64_t Seek(std::int64_t offset, SeekOrigin origin) override {
    const int whence = origin == SeekOrigin::kBegin     ? SEEK_SET
                       : origin == SeekOrigin::kCurrent ? SEEK_CUR
                                                        : SEEK_END;
    const off_t position = ::lseek(file_.number(), offset, whence);
    if (position < 0) Fail(Kind::kRead);
    return position;
  }

  [[nodiscard]] std::int64_t Size() const override { return Status().st_size; }

  [[nodiscard]] FileStamp Stamp() const override { return StampOf(Status()); }

  void Reserve(std::int64_t size) override {
    const off_t held = Status().st_size;
    if (size <= held) return;
    int result = 0;
    do {
      result = ::fallocate(file_.number(), FALLOC_FL_KEEP_SIZE, held, size - held);
    } while (result != 0 && errno == EINTR);
    if (result != 0 && errno != EOPNOTSUPP && errno != ENOSYS) Fail(Kind::kWrite);
  }

  void Resize(std::int64_t size) override {
    if (!Truncate(file_.number(), size)) Fail(Kind::kWrite);
  }

  void StartSync() override {
    // Where that cannot be asked for, the waiting does it all.
    static_cast<void>(::sync_file_range(file_.number(), 0, 0, SYNC_FILE_RANGE_WRITE));
  }

  // The system's clock for file times ticks in milliseconds, in which others may write, too.
  void Sync() override {
    timespec times[2] = {{0, UTIME_OMIT}, {}};
    ::clock_gettime(CLOCK_REALTIME, &times[1]);
    static_cast<void>(::futimens(file_.number(), times));  // another owner's file keeps the tick
    int result = 0;
    do {
      result = ::fdatasync(file_.number());
    } while (result != 0 && errno == EINTR);
    if (result != 0) Fail(Kind::kWrite);
  }

 private:
  [[noreturn]] void Fail(Kind kind) const { throw SystemFileError(kind, path_, errno); }

  [[nodiscard]] struct stat Status() const {
    struct stat status {};
    if (::fstat(file_.number(), &status) != 0) Fail(Kind::kRead);
    return status;
  }

  FileDescriptor file_;
  std::string path_;
};

// Marks of a share mode need a file that can be read, so writing alone opens
// for both.
int FlagsOf(FileMode mode) {
  if (mode == kModeCreate) return O_RDWR | O_CREAT;
  return (mode & kModeAccessMask) == kModeRead ? O_RDONLY : O_RDWR;
}

}  // namespace

std::unique_ptr<FileStream> OpenStream(const std::string& system_name, std::string_view path,
                                       FileMode mode) {
  const Kind kind = mode == kModeCreate ? Kind::kCreate : Kind::kOpen;
  FileDescriptor file = FileDescriptor::Open(system_name, FlagsOf(mode));
  if (!file.valid()) throw SystemFileError(kind, path, errno);
  struct stat status {};
  if (::fstat(file.number(), &status) != 0) throw SystemFileError(kind, path, errno);
  if (S_ISDIR(status.st_mode)) throw SystemFileError(kind, path, EISDIR);
  if (!ClaimShare(file.number(), mode)) throw SystemFileError(kind, path, EBUSY);
  if (mode == kModeCreate && !Truncate(file.number(), 0)) {
    throw SystemFileError(kind, path, errno);
  }
  return std::make_unique<PosixStream>(std::move(file), path);
}

}  // namespace customsconv::posix
