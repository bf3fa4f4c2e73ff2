#include "platform/posix/posix_file_series.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/posix/system_names.h"

namespace customsconv::posix {
namespace {

// Smaller files are written as quickly as they are brought up to date.
constexpr std::size_t kWorthKeeping = 64 * 1024;
// The last byte of a copy may be an end mark, which added bytes overwrite.
constexpr std::size_t kEndMark = 1;

bool IsUntouched(const FileDescriptor& file, FileStamp stamp) {
  struct stat status {};
  return file.valid() && ::fstat(file.number(), &status) == 0 && StampOf(status) == stamp &&
         status.st_nlink == 1;
}

// The system grants a lease for writing to who is alone with a file. Where it knows no leases,
// nobody counts as alone.
bool IsAloneWith(const FileDescriptor& file) {
  // Should somebody come in just now, the signal that tells it must be one that nobody minds.
  if (::fcntl(file.number(), F_SETSIG, SIGURG) != 0) return false;
  if (::fcntl(file.number(), F_SETLEASE, F_WRLCK) != 0) return false;
  return ::fcntl(file.number(), F_SETLEASE, F_UNLCK) == 0;
}

}  // namespace

// The next version, which takes its place in the series when it is placed.
class PosixFileSeries::Next : public PendingFile {
 public:
  Next(PosixFileSeries& series, std::unique_ptr<PosixPendingFile> file, std::size_t size,
       SameBytes same)
      : series_(series), file_(std::move(file)), size_(size), same_(same) {}

  void Place() override { series_.Place(*file_, size_, same_); }
  bool Settle() override { return file_->Settle(); }

 private:
  void WaitForDisk() override { file_->Harden(); }

  PosixFileSeries& series_;
  std::unique_ptr<PosixPendingFile> file_;
  std::size_t size_;
  SameBytes same_;
};

PosixFileSeries::Copy::Copy(FileDescriptor opened, std::string file_name, Version old_version,
                            SameBytes unchanged)
    : file(std::move(opened)), name(std::move(file_name)), version(old_version), same(unchanged) {}

PosixFileSeries::Copy::~Copy() {
  if (!name.empty()) ::unlink(name.c_str());
}

std::unique_ptr<PendingFile> PosixFileSeries::Stage(std::string_view content, SameBytes same) {
  std::unique_ptr<PosixPendingFile> file = Grown(content, same);
  if (!file) file = StageFile(SystemName(path_), path_, {&content, 1});
  return std::make_unique<Next>(*this, std::move(file), content.size(), same);
}

// The kept copy with what was added; null when there is none that would do.
std::unique_ptr<PosixPendingFile> PosixFileSeries::Grown(std::string_view content, SameBytes same) {
  const std::unique_ptr<Copy> copy = std::move(copy_);
  if (!copy) return nullptr;
  const std::size_t head = std::max(same.begin, copy->same.begin);
  const std::size_t tail = std::min(same.end, copy->same.end);
  const bool only_added =
      head <= tail && tail + kEndMark >= copy->version.size && content.size() >= copy->version.size;
  if (!only_added || !IsAloneWith(copy->file)) return nullptr;
  if (!IsUntouched(copy->file, copy->version.stamp)) return nullptr;
  auto file = PosixPendingFile::GoOn(std::move(copy->file), std::exchange(copy->name, {}),
                                     SystemName(path_), path_);
  if (file->target() != target_) return nullptr;
  file->WriteAt(tail, content.substr(tail));
  file->WriteAt(0, content.substr(0, head));
  file->StartWriting();
  return file;
}

void PosixFileSeries::Place(PosixPendingFile& file, std::size_t size, SameBytes same) {
  const bool worth_keeping = placed_ && size >= kWorthKeeping && file.target() == target_;
  const std::string replaced = worth_keeping ? file.Exchange() : std::string();
  if (replaced.empty()) {
    file.Place();
  } else {
    KeepReplaced(replaced, same);
  }
  placed_ = {size, file.placed_stamp()};
  target_ = file.target();
}

// What was replaced, unless somebody else put it there.
void PosixFileSeries::KeepReplaced(const std::string& name, SameBytes same) {
  FileDescriptor file = HoldTemporary(name);
  if (IsUntouched(file, placed_->stamp)) {
    copy_ = std::make_unique<Copy>(std::move(file), name, *placed_, same);
  } else {
    ::unlink(name.c_str());
  }
}

}  // namespace customsconv::posix
