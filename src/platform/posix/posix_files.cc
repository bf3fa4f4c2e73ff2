#include "platform/posix/posix_files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <new>
#include <optional>
#include <stdexcept>

#include "platform/full_path.h"
#include "platform/name_mask.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/folder_listing.h"
#include "platform/posix/posix_output_file.h"
#include "platform/posix/posix_pending_file.h"
#include "platform/posix/posix_stream.h"
#include "platform/posix/share_locks.h"
#include "platform/posix/system_error.h"
#include "platform/posix/system_names.h"
#include "text/file_names.h"

namespace customsconv::posix {
namespace {

using Kind = FileError::Kind;

std::optional<struct stat> StatusOf(const std::string& system_name) {
  struct stat status {};
  if (::stat(system_name.c_str(), &status) != 0) return std::nullopt;
  return status;
}

// The same for a name as the system sees it. Most names exist as written, which
// takes one look at the disk.
std::optional<struct stat> StatusAt(std::string_view path) {
  auto status = StatusOf(SystemNameAsWritten(path));
  return status ? status : StatusOf(SystemName(path));
}

// The existing file that `name` leads to, without links; empty when missing.
std::string RealName(const std::string& name) {
  char resolved[PATH_MAX];
  return ::realpath(name.c_str(), resolved) != nullptr ? resolved : "";
}

// Reads to the end or `limit` (0: none); `expected` bytes are likely. Goes by pieces that stay in
// the processor's cache, so that the memory of a large file is touched once.
std::string ReadAll(const FileDescriptor& file, std::size_t expected, std::size_t limit,
                    std::string_view path) {
  const std::size_t most = limit == 0 ? std::string::npos : limit;
  std::array<char, 64 * 1024> piece;
  std::string content;
  content.reserve(std::min(expected, most));
  for (;;) {
    const std::size_t wanted = std::min(piece.size(), most - content.size());
    const std::ptrdiff_t got = file.Read(piece.data(), wanted);
    if (got < 0) throw SystemFileError(Kind::kRead, path, errno);
    content.append(piece.data(), static_cast<std::size_t>(got));
    if (static_cast<std::size_t>(got) < piece.size()) return content;
  }
}

std::string ReadFile(const std::string& name, std::size_t limit, std::string_view path) {
  const FileDescriptor file = FileDescriptor::Open(name, O_RDONLY);
  struct stat status {};
  if (!file.valid() || ::fstat(file.number(), &status) != 0) {
    throw SystemFileError(Kind::kOpen, path, errno);
  }
  if (S_ISDIR(status.st_mode)) throw SystemFileError(Kind::kOpen, path, EISDIR);
  // A device has no end.
  if (S_ISCHR(status.st_mode)) throw SystemFileError(Kind::kOpen, path, EINVAL);
  if (!MayRead(file.number())) throw SystemFileError(Kind::kOpen, path, EBUSY);
  return ReadAll(file, static_cast<std::size_t>(status.st_size), limit, path);
}

class FolderLock : public FileLock {
 public:
  explicit FolderLock(FileDescriptor folder) : folder_(std::move(folder)) {}

 private:
  FileDescriptor folder_;  // the lock goes when it is closed
};

class HeldFile : public FileLock {
 public:
  HeldFile(FileDescriptor file, std::string name)
      : file_(std::move(file)), name_(std::move(name)) {}
  ~HeldFile() override {
    if (!name_.empty() && IsInPlace()) ::unlink(name_.c_str());
  }
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

  // The name still leads to the file, which who held it before may have removed.
  [[nodiscard]] bool IsInPlace() const {
    struct stat held {};
    struct stat named {};
    return ::fstat(file_.number(), &held) == 0 && ::lstat(name_.c_str(), &named) == 0 &&
           held.st_ino == named.st_ino && held.st_dev == named.st_dev;
  }
  void Forget() { name_.clear(); }
  void Doubt() { certain_ = false; }
  [[nodiscard]] bool certain() const override { return certain_; }

 private:
  FileDescriptor file_;
  std::string name_;
  bool certain_ = true;
};

bool IsFile(const dirent& entry, const std::string& folder) {
  if (entry.d_type == DT_REG) return true;
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return false;
  const auto status = StatusOf(folder + "/" + entry.d_name);
  return status && !S_ISDIR(status->st_mode);
}

}  // namespace

bool PosixFiles::Exists(std::string_view path) const {
  const auto status = StatusAt(path);
  return status && !S_ISDIR(status->st_mode);
}

bool PosixFiles::ExistsAsWritten(std::string_view path) const {
  const std::string_view folder = FolderPart(path);
  const std::string_view file = path.substr(folder.size());
  const auto status = StatusOf(SystemName(folder) + SystemNameAsWritten(file));
  return status && !S_ISDIR(status->st_mode);
}

bool PosixFiles::FolderExists(std::string_view path) const {
  const auto status = StatusAt(path);
  return status && S_ISDIR(status->st_mode);
}

FileStamp PosixFiles::Stamp(std::string_view path) const {
  const auto status = StatusAt(path);
  return status && !S_ISDIR(status->st_mode) ? StampOf(*status) : kNoStamp;
}

std::string PosixFiles::Read(std::string_view path, std::size_t limit) const {
  const std::string name = SystemName(path);
  const auto found = StatusOf(name);
  try {
    return found && S_ISFIFO(found->st_mode) ? ReadPipe(name, limit, path)
                                             : ReadFile(name, limit, path);
  } catch (const std::bad_alloc&) {
    throw SystemFileError(Kind::kRead, path, ENOMEM);
  } catch (const std::length_error&) {
    throw SystemFileError(Kind::kRead, path, EFBIG);
  }
}

// A pipe is a way to hand over a file. Its writer may come late, stop for a while or never come,
// so nothing here waits for long.
std::string PosixFiles::ReadPipe(const std::string& system_name, std::size_t limit,
                                 std::string_view path) const {
  constexpr int kPause = 100;  // milliseconds between two calls of on_wait_
  const FileDescriptor file = FileDescriptor::Open(system_name, O_RDONLY | O_NONBLOCK);
  if (!file.valid()) throw SystemFileError(Kind::kOpen, path, errno);
  const std::size_t most = limit == 0 ? std::string::npos : limit;
  std::array<char, 64 * 1024> piece;
  std::string content;
  while (content.size() < most) {
    pollfd written{file.number(), POLLIN, 0};
    if (::poll(&written, 1, kPause) <= 0) {
      on_wait_();
      continue;
    }
    const ssize_t got =
        ::read(file.number(), piece.data(), std::min(piece.size(), most - content.size()));
    if (got == 0) break;
    if (got > 0) {
      content.append(piece.data(), static_cast<std::size_t>(got));
    } else if (errno != EINTR && errno != EAGAIN) {
      throw SystemFileError(Kind::kRead, path, errno);
    }
  }
  return content;
}

std::unique_ptr<PendingFile> PosixFiles::StagePieces(std::string_view path, FilePieces content) {
  const std::string name = SystemName(path);
  ClearOnce(FolderOf(name));
  return StageFile(name, path, content);
}

std::unique_ptr<OutputFile> PosixFiles::StartOutput(std::string_view path) {
  const std::string name = SystemName(path);
  ClearOnce(FolderOf(name));
  return std::make_unique<PosixOutputFile>(PosixPendingFile::Create(name, path));
}

void PosixFiles::ClearOnce(const std::string& folder) {
  if (cleared_folders_.insert(folder).second) RemoveAbandonedFiles(folder);
}

// Exactly one of two that use the same letter case gets the file; all stations
// spell their marker files alike.
bool PosixFiles::CreateNew(std::string_view path, std::string_view twin) {
  const std::string name = SystemName(path);
  if (!twin.empty() && ::link(SystemName(twin).c_str(), name.c_str()) == 0) return true;
  if (FileDescriptor::Open(name, O_WRONLY | O_CREAT | O_EXCL).valid()) return true;
  const int error = errno;
  if (error != EEXIST) throw SystemFileError(Kind::kCreate, path, error);
  const auto status = StatusOf(name);
  if (status && S_ISDIR(status->st_mode)) throw SystemFileError(Kind::kCreate, path, EISDIR);
  return false;
}

void PosixFiles::Append(std::string_view path, std::string_view content) {
  FileDescriptor file = FileDescriptor::Open(SystemName(path), O_WRONLY | O_APPEND | O_CREAT);
  if (!file.valid()) throw SystemFileError(Kind::kCreate, path, errno);
  if (!file.Write(content) || !file.Close()) throw SystemFileError(Kind::kWrite, path, errno);
}

bool PosixFiles::Delete(std::string_view path) { return ::unlink(SystemName(path).c_str()) == 0; }

bool PosixFiles::Rename(std::string_view path, std::string_view new_path) {
  const std::string to = SystemName(new_path);
  return !StatusOf(to) && ::rename(SystemName(path).c_str(), to.c_str()) == 0;
}

bool PosixFiles::SyncFolder(std::string_view path) {
  const FileDescriptor folder =
      FileDescriptor::Open(FolderOf(SystemName(path)), O_RDONLY | O_DIRECTORY);
  if (!folder.valid()) return false;
  int result = 0;
  do {
    result = ::fsync(folder.number());
  } while (result != 0 && errno == EINTR);
  const bool disk_fails = result != 0 && (errno == EIO || errno == ENOSPC || errno == EDQUOT);
  if (disk_fails) throw SystemFileError(Kind::kWrite, path, errno);
  return result == 0;
}

std::unique_ptr<FileStream> PosixFiles::Open(std::string_view path, FileMode mode) const {
  return OpenStream(SystemName(path), path, mode);
}

std::vector<std::string> PosixFiles::Find(std::string_view folder, std::string_view mask) const {
  const std::string folder_name = SystemName(folder.empty() ? "." : folder);
  std::vector<std::string> stored;
  FolderListing listing(folder_name);
  while (const dirent* entry = listing.Next()) {
    const auto name = NameFromSystem(entry->d_name);
    if (name && MatchesMask(*name, mask) && IsFile(*entry, folder_name)) {
      stored.emplace_back(entry->d_name);
    }
  }
  std::sort(stored.begin(), stored.end());
  for (std::string& name : stored) name = NameFromSystem(name).value();
  return stored;
}

std::string PosixFiles::FullName(std::string_view path) const {
  if (IsRooted(path)) return FullPath(path, {});
  const auto current = NameFromSystem(RealName("."));
  if (current && !current->empty()) return FullPath(path, *current);
  // From a folder without a name in the code page, only relative names lead on.
  return std::string(path);
}

std::string PosixFiles::Identity(std::string_view path) const {
  const std::string name = SystemName(path);
  const std::string file = name.substr(name.rfind('/') + 1);
  if (file.empty()) return RealFolder(name);
  struct stat status {};
  const bool is_plain = file != "." && file != ".." &&
                        (::lstat(name.c_str(), &status) != 0 || !S_ISLNK(status.st_mode));
  std::string real = is_plain ? std::string() : RealName(name);
  if (!real.empty()) return real;
  real = RealFolder(FolderOf(name));
  return real.append(real.ends_with('/') ? "" : "/").append(file);
}

// Tables of a set ask for one folder again and again. What is known of it holds as long as its
// name leads to the same one.
std::string PosixFiles::RealFolder(const std::string& name) const {
  const auto status = StatusOf(name);
  if (!status) return name;
  KnownFolder& known = real_folders_[name];
  if (known.name.empty() || known.device != status->st_dev || known.number != status->st_ino) {
    known = {RealName(name), status->st_dev, status->st_ino};
  }
  return known.name.empty() ? name : known.name;
}

std::string PosixFiles::ShortName(std::string_view path) const {
  return NameFromSystem(RealName(SystemName(path))).value_or("");
}

std::unique_ptr<FileLock> PosixFiles::Lock(std::string_view path,
                                           const std::function<void()>& on_busy) {
  FileDescriptor folder = FileDescriptor::Open(FolderOf(SystemName(path)), O_RDONLY | O_DIRECTORY);
  if (!folder.valid()) {
    if (errno == EACCES) return nullptr;  // a folder that lets no one list it
    throw SystemFileError(Kind::kOpen, path, errno);
  }
  while (::flock(folder.number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) {
      on_busy();
    } else if (errno != EINTR) {
      return nullptr;
    }
  }
  return std::make_unique<FolderLock>(std::move(folder));
}

std::unique_ptr<FileLock> PosixFiles::HoldFile(std::string_view path) {
  const std::string name = SystemName(path);
  ClearOnce(FolderOf(name));
  for (;;) {
    const bool was_there = StatusOf(name).has_value();
    // Some network drives lock only what may be written.
    FileDescriptor file = FileDescriptor::Open(name, O_RDWR | O_CREAT | O_NOFOLLOW);
    if (!file.valid()) throw SystemFileError(Kind::kCreate, path, errno);
    // Another user takes it over when its maker dies.
    static_cast<void>(::fchmod(file.number(), 0666));
    const bool locked = ::flock(file.number(), LOCK_EX | LOCK_NB) == 0;
    if (!locked && errno == EINTR) continue;
    if (!locked && errno == EWOULDBLOCK) return nullptr;
    auto held = std::make_unique<HeldFile>(std::move(file), name);
    if (!locked) held->Doubt();
    if (!locked && was_there) held->Forget();  // its maker may live and removes it
    if (!locked || held->IsInPlace()) return held;
    held->Forget();
  }
}

}  // namespace customsconv::posix
