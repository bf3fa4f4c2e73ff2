// Waits for another process of ours, and says so when a person could notice it.

#include "platform/wait_for_lock.h"

#include "base/cp1251_literal.h"

namespace customsconv {

std::unique_ptr<FileLock> WaitForLock(Host& host, std::string_view path) {
  constexpr std::uint32_t kPause = 10;        // milliseconds between two tries
  constexpr std::uint64_t kUnnoticed = 1000;  // milliseconds of waiting that need no word
  const std::uint64_t start = host.clock.Ticks();
  std::unique_ptr<Progress> indication;
  return host.files.Lock(path, [&] {
    if (!indication && host.clock.Ticks() - start >= kUnnoticed) {
      const std::string title("Ждем, пока другая станция освободит "_cp1251);
      indication = host.dialogs.StartProgress(title + std::string(path), 0);
    }
    host.clock.Sleep(kPause);
  });
}

}  // namespace customsconv
