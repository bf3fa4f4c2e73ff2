#include "platform/posix/posix_pending_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/posix/folder_listing.h"
#include "platform/posix/system_error.h"
#include "platform/posix/system_names.h"

namespace customsconv::posix {
namespace {

using Kind = FileError::Kind;

constexpr std::string_view kTemporaryStart = "~cc";
constexpr std::string_view kTemporaryEnd = ".tmp";

bool Hold(const FileDescriptor& file) { return ::flock(file.number(), LOCK_EX | LOCK_NB) == 0; }

// The file that `name` leads to, through links.
std::string BehindLinks(const std::string& name) {
  struct stat status {};
  if (::lstat(name.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return name;
  char resolved[PATH_MAX];
  return ::realpath(name.c_str(), resolved) != nullptr ? std::string(resolved) : name;
}

// A new file beside `target`, open for writing, and its name.
std::pair<FileDescriptor, std::string> CreateTemporary(const std::string& target,
                                                       std::string_view path) {
  constexpr int kTries = 100;
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  for (int i = 0; i < kTries; ++i) {
    char number[64];
    std::snprintf(number, sizeof number, "%lx-%lx-%x", static_cast<long>(::getpid()), now.tv_nsec,
                  i);
    const std::string temporary =
        FolderOf(target).append("/").append(kTemporaryStart).append(number).append(kTemporaryEnd);
    FileDescriptor file = FileDescriptor::Open(temporary, O_WRONLY | O_CREAT | O_EXCL);
    if (file.valid()) {
      static_cast<void>(Hold(file));  // without it the file's age protects it
      return {std::move(file), temporary};
    }
    if (errno != EEXIST) throw SystemFileError(Kind::kCreate, path, errno);
  }
  throw SystemFileError(Kind::kCreate, path, EEXIST);
}

// What stands at `target` now, if anything; refuses what may not be replaced,
// which renaming alone would not notice.
std::optional<struct stat> OldFile(const std::string& target, std::string_view path) {
  struct stat status {};
  if (::stat(target.c_str(), &status) != 0) {
    if (errno == ENOENT) return std::nullopt;
    throw SystemFileError(Kind::kCreate, path, errno);
  }
  if (S_ISDIR(status.st_mode)) throw SystemFileError(Kind::kCreate, path, EISDIR);
  if (::access(target.c_str(), W_OK) != 0) throw SystemFileError(Kind::kCreate, path, errno);
  return status;
}

bool IsTemporaryName(std::string_view name) {
  if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd)) return false;
  name.remove_prefix(kTemporaryStart.size());
  name.remove_suffix(kTemporaryEnd.size());
  return name.find_first_not_of("0123456789abcdef-") == std::string_view::npos;
}

bool IsOld(const FileDescriptor& file) {
  constexpr time_t kOld = 10 * 60;
  struct stat status {};
  return ::fstat(file.number(), &status) == 0 && ::time(nullptr) - status.st_mtime > kOld;
}

// Invalid when somebody else holds it, and for what is no plain file.
FileDescriptor HoldTemporary(const std::string& name) {
  // Whoever guards the file against opening is not waited for.
  FileDescriptor file = FileDescriptor::Open(name, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
  struct stat status {};
  const bool ours =
      file.valid() && ::fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode) && Hold(file);
  return ours ? std::move(file) : FileDescriptor();
}

}  // namespace

PosixPendingFile::PosixPendingFile(FileDescriptor file, std::string temporary, std::string target,
                                   std::string_view path)
    : file_(std::move(file)),
      temporary_(std::move(temporary)),
      target_(std::move(target)),
      path_(path) {}

PosixPendingFile::~PosixPendingFile() {
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

std::unique_ptr<PosixPendingFile> PosixPendingFile::Create(const std::string& system_name,
                                                           std::string_view path) {
  std::string target = BehindLinks(system_name);
  const std::optional<struct stat> old = OldFile(target, path);
  auto [file, temporary] = CreateTemporary(target, path);
  std::unique_ptr<PosixPendingFile> pending(
      new PosixPendingFile(std::move(file), std::move(temporary), std::move(target), path));
  if (old) pending->TakeAfter(*old);
  return pending;
}

void PosixPendingFile::TakeAfter(const struct stat& old) {
  // Another owner may be beyond our rights; the permissions are what counts.
  static_cast<void>(::fchown(file_.number(), old.st_uid, old.st_gid) != 0);
  if (::fchmod(file_.number(), old.st_mode & 07777) != 0) {
    throw SystemFileError(Kind::kWrite, path_, errno);
  }
}

void PosixPendingFile::WriteAt(std::size_t offset, std::string_view bytes) {
  if (!file_.WriteAt(offset, bytes)) throw SystemFileError(Kind::kWrite, path_, errno);
}

void PosixPendingFile::StartWriting() {
  // Where that cannot be asked for, hardening does it all.
  static_cast<void>(::sync_file_range(file_.number(), 0, 0, SYNC_FILE_RANGE_WRITE));
}

void PosixPendingFile::Harden() {
  if (::fsync(file_.number()) != 0) throw SystemFileError(Kind::kWrite, path_, errno);
}

void PosixPendingFile::Place() {
  // What only closing reports is not lost.
  if (file_.valid() && !file_.Close()) throw SystemFileError(Kind::kWrite, path_, errno);
  if (::rename(temporary_.c_str(), target_.c_str()) != 0) {
    throw SystemFileError(Kind::kCreate, path_, errno);  // a server's file that others hold
  }
  temporary_.clear();
}

// A file system that cannot do so is no failure: the file is in place.
bool PosixPendingFile::Settle() {
  const FileDescriptor folder = FileDescriptor::Open(FolderOf(target_), O_RDONLY | O_DIRECTORY);
  return folder.valid() && ::fsync(folder.number()) == 0;
}

std::unique_ptr<PosixPendingFile> StageFile(const std::string& system_name, std::string_view path,
                                            FilePieces content) {
  auto pending = PosixPendingFile::Create(system_name, path);
  std::size_t offset = 0;
  for (const std::string_view piece : content) {
    pending->WriteAt(offset, piece);
    offset += piece.size();
  }
  pending->StartWriting();
  return pending;
}

void RemoveAbandonedFiles(const std::string& folder) {
  FolderListing listing(folder);
  while (const dirent* const entry = listing.Next()) {
    if (!IsTemporaryName(entry->d_name)) continue;
    const std::string name = folder + "/" + entry->d_name;
    const FileDescriptor file = HoldTemporary(name);
    if (file.valid() && IsOld(file)) ::unlink(name.c_str());
  }
}

}  // namespace customsconv::posix
