#include "platform/posix/posix_pending_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/system_error.h"
#include "platform/posix/system_names.h"

namespace customsconv::posix {
namespace {

using Kind = FileError::Kind;

class PosixPendingFile : public PendingFile {
 public:
  // Takes over the temporary file, which goes with the object unless placed.
  PosixPendingFile(FileDescriptor file, std::string temporary, std::string target,
                   std::string_view path)
      : file_(std::move(file)),
        temporary_(std::move(temporary)),
        target_(std::move(target)),
        path_(path) {}
  ~PosixPendingFile() override {
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
  }
  PosixPendingFile(const PosixPendingFile&) = delete;
  PosixPendingFile& operator=(const PosixPendingFile&) = delete;

  [[nodiscard]] bool Write(FilePieces content) const {
    for (const std::string_view piece : content) {
      if (!file_.Write(piece)) return false;
    }
    return true;
  }
  // Permissions and owner of the file that is replaced.
  [[nodiscard]] bool TakeAfter(const struct stat& old) const {
    // Another owner may be beyond our rights; the permissions are what counts.
    static_cast<void>(::fchown(file_.number(), old.st_uid, old.st_gid) != 0);
    return ::fchmod(file_.number(), old.st_mode & 07777) == 0;
  }
  // The disk begins to write while the program goes on; where that cannot be asked for,
  // hardening does it all.
  void StartWriting() const {
    static_cast<void>(::sync_file_range(file_.number(), 0, 0, SYNC_FILE_RANGE_WRITE));
  }

  void Harden() override {
    if (::fsync(file_.number()) != 0 || !file_.Close()) {
      throw SystemFileError(Kind::kWrite, path_, errno);
    }
  }

  void Place() override {
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) {
      throw SystemFileError(Kind::kCreate, path_, errno);  // a server's file that others hold
    }
    temporary_.clear();
  }

  // A file system that cannot do so is no failure: the file is in place.
  void Settle() override {
    const FileDescriptor folder = FileDescriptor::Open(FolderOf(target_), O_RDONLY | O_DIRECTORY);
    if (folder.valid()) ::fsync(folder.number());
  }

 private:
  FileDescriptor file_;    // open until it is hardened
  std::string temporary_;  // empty once it is in place
  std::string target_;
  std::string path_;
};

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
    char name[64];
    std::snprintf(name, sizeof name, "/~cc%lx-%lx-%x.tmp", static_cast<long>(::getpid()),
                  now.tv_nsec, i);
    const std::string temporary = FolderOf(target) + name;
    FileDescriptor file = FileDescriptor::Open(temporary, O_WRONLY | O_CREAT | O_EXCL);
    if (file.valid()) return {std::move(file), temporary};
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

}  // namespace

std::unique_ptr<PendingFile> StageFile(const std::string& system_name, std::string_view path,
                                       FilePieces content) {
  const std::string target = BehindLinks(system_name);
  const std::optional<struct stat> old = OldFile(target, path);
  auto [file, temporary] = CreateTemporary(target, path);
  auto pending = std::make_unique<PosixPendingFile>(std::move(file), temporary, target, path);
  if (!pending->Write(content) || (old && !pending->TakeAfter(*old))) {
    throw SystemFileError(Kind::kWrite, path, errno);
  }
  pending->StartWriting();
  return pending;
}

}  // namespace customsconv::posix
