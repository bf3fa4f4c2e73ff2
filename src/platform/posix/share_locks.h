#ifndef CUSTOMSCONV_PLATFORM_POSIX_SHARE_LOCKS_H_
#define CUSTOMSCONV_PLATFORM_POSIX_SHARE_LOCKS_H_

#include "platform/files.h"

namespace customsconv::posix {

// Share modes between this system's programs, kept as locks on byte positions
// far behind any content: everybody who opens a file marks there what it does
// and what it denies to others. The marks go when the file is closed.

// Marks the readable file `descriptor` as open in `mode` and returns true, or
// returns false when somebody else's share mode forbids that. Where the file
// system keeps no locks, everything is allowed.
[[nodiscard]] bool ClaimShare(int descriptor, FileMode mode);

// Whether reading without a claim is allowed now.
[[nodiscard]] bool MayRead(int descriptor);

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_SHARE_LOCKS_H_
