#ifndef CUSTOMSCONV_PLATFORM_POSIX_FILE_DESCRIPTOR_H_
#define CUSTOMSCONV_PLATFORM_POSIX_FILE_DESCRIPTOR_H_

#include <sys/stat.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "platform/files.h"

namespace customsconv::posix {

// An open file of the system, closed on destruction. The functions return what
// the system says; `errno` holds the cause of a failure.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number = -1) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept;
  ~FileDescriptor();

  // `name` as the system knows it; never inherited by programs that are started. Never one of
  // the standard descriptors, which a file would share with what is printed.
  [[nodiscard]] static FileDescriptor Open(const std::string& name, int flags);

  [[nodiscard]] bool valid() const { return number_ >= 0; }
  [[nodiscard]] int number() const { return number_; }

  // Reads until `count` bytes or the end; the number read, or -1.
  [[nodiscard]] std::ptrdiff_t Read(char* to, std::size_t count) const;
  [[nodiscard]] bool Write(std::string_view content) const;
  [[nodiscard]] bool WriteAt(std::size_t offset, std::string_view content) const;
  // Closes now, so that what only closing reports is not lost.
  [[nodiscard]] bool Close();

 private:
  int number_;
};

// Opens those of the descriptors 0 to 2 that the process was started without on the null device,
// so that nothing that is opened later, by whatever library, takes the place of a standard stream.
void OpenStandardDescriptors();

// Changes whenever the content is written or the file is replaced by another. Always the same
// for a pipe: what was written to it last cannot be read again.
[[nodiscard]] FileStamp StampOf(const struct stat& status);

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_FILE_DESCRIPTOR_H_
