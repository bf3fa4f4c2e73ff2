#include "platform/posix/memory.h"

#include <malloc.h>

#include <limits>

namespace customsconv::posix {

void KeepFreedMemory() {
#ifdef __GLIBC__
  // Large blocks come from the one heap, which never shrinks.
  ::mallopt(M_MMAP_MAX, 0);
  ::mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
#endif
}

}  // namespace customsconv::posix
