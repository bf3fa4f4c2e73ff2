#ifndef CUSTOMSCONV_PLATFORM_WAIT_FOR_LOCK_H_
#define CUSTOMSCONV_PLATFORM_WAIT_FOR_LOCK_H_

#include <memory>
#include <string_view>

#include "platform/host.h"

namespace customsconv {

// Files::Lock that waits as long as another process holds the lock. From the second second on a
// wait indication says so. What the host's clock throws while it waits (a person who gives up)
// goes through.
[[nodiscard]] std::unique_ptr<FileLock> WaitForLock(Host& host, std::string_view path);

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_WAIT_FOR_LOCK_H_
