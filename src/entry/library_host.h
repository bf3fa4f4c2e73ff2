#ifndef CUSTOMSCONV_ENTRY_LIBRARY_HOST_H_
#define CUSTOMSCONV_ENTRY_LIBRARY_HOST_H_

#include <memory>
#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "platform/host.h"

namespace customsconv {

// The outside world of the library in a host program that gives it no dialogs:
// the system's files, clock and processes, and messages that go to a log file in the
// program folder. Questions are answered with the safe default.
class LibraryHost {
 public:
  LibraryHost();
  ~LibraryHost();
  LibraryHost(const LibraryHost&) = delete;
  LibraryHost& operator=(const LibraryHost&) = delete;

  [[nodiscard]] Host& host() CUSTOMSCONV_LIFETIME_BOUND;
  // Messages from now on go to "customsconv.log" in this folder, which ends
  // with a separator. Nothing is written before the first message.
  void StartLog(std::string_view program_dir);

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_ENTRY_LIBRARY_HOST_H_
