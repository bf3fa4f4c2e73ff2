// Calls that are repeated when a signal interrupts them, and no descriptor below 3, which programs
// take for their standard streams.

#include "platform/posix/file_descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace customsconv::posix {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
  std::swap(number_, other.number_);
  return *this;
}

FileDescriptor::~FileDescriptor() {
  if (valid()) ::close(number_);
}

FileDescriptor FileDescriptor::Open(const std::string& name, int flags) {
  constexpr mode_t kMode = 0666;  // less what the user's mask takes away
  int number = -1;
  do {
    number = ::open(name.c_str(), flags | O_CLOEXEC, kMode);
  } while (number < 0 && errno == EINTR);
  FileDescriptor file(number);
  if (!file.valid() || number > STDERR_FILENO) return file;
  return FileDescriptor(::fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

std::ptrdiff_t FileDescriptor::Read(char* to, std::size_t count) const {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = ::read(number_, to + done, count - done);
    if (got == 0) break;
    if (got > 0) {
      done += static_cast<std::size_t>(got);
    } else if (errno != EINTR) {
      return -1;
    }
  }
  return static_cast<std::ptrdiff_t>(done);
}

bool FileDescriptor::Write(std::string_view content) const {
  while (!content.empty()) {
    const ssize_t put = ::write(number_, content.data(), content.size());
    if (put >= 0) {
      content.remove_prefix(static_cast<std::size_t>(put));
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

bool FileDescriptor::WriteAt(std::size_t offset, std::string_view content) const {
  while (!content.empty()) {
    const ssize_t put =
        ::pwrite(number_, content.data(), content.size(), static_cast<off_t>(offset));
    if (put >= 0) {
      offset += static_cast<std::size_t>(put);
      content.remove_prefix(static_cast<std::size_t>(put));
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

bool FileDescriptor::Close() { return ::close(std::exchange(number_, -1)) == 0; }

void OpenStandardDescriptors() {
  constexpr const char* kNullDevice = "/dev/null";
  for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
    if (::fcntl(number, F_GETFD) >= 0) continue;
    // The other way round than they are used: reading and writing go on failing.
    const int flags = number == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    // Gets the lowest number that is free, which is this one.
    static_cast<void>(::open(kNullDevice, flags));
  }
}

// The time alone would not do: the system's clock for it ticks in milliseconds.
FileStamp StampOf(const struct stat& status) {
  if (!S_ISREG(status.st_mode)) return kPipeStamp;
  std::uint64_t stamp = static_cast<std::uint64_t>(status.st_mtim.tv_sec) * 1'000'000'000 +
                        static_cast<std::uint64_t>(status.st_mtim.tv_nsec);
  for (const auto part :
       {static_cast<std::uint64_t>(status.st_size), static_cast<std::uint64_t>(status.st_ino)}) {
    stamp = (stamp ^ part) * 0x9E3779B97F4A7C15ULL;
    stamp ^= stamp >> 29;
  }
  return static_cast<FileStamp>(stamp >> 1);  // never kNoStamp
}

}  // namespace customsconv::posix
