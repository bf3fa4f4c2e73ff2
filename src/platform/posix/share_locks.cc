#include "platform/posix/share_locks.h"

#include <fcntl.h>

#include <cstdint>

namespace customsconv::posix {
namespace {

enum Mark : off_t { kReads, kWrites, kDeniesReading, kDeniesWriting, kMarkCount };

constexpr off_t kFirstMark = INT64_MAX - 64;

struct flock LockOn(Mark mark, short type) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = kFirstMark + mark;
  lock.l_len = 1;
  return lock;
}

// Marks are shared locks; several users can hold the same.
void Set(int descriptor, Mark mark) {
  struct flock lock = LockOn(mark, F_RDLCK);
  static_cast<void>(::fcntl(descriptor, F_OFD_SETLK, &lock));  // no locks here: no marks
}

bool SomebodyElseHolds(int descriptor, Mark mark) {
  struct flock lock = LockOn(mark, F_WRLCK);
  return ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace

bool ClaimShare(int descriptor, FileMode mode) {
  const bool creates = mode == kModeCreate;
  const unsigned access = creates ? kModeReadWrite : mode & kModeAccessMask;
  const unsigned share = creates ? kShareExclusive : mode & ~kModeAccessMask;
  const bool denies_writing = share != kShareDenyNone;
  const struct {
    bool wanted;
    Mark mark;
    Mark conflict;
  } claims[] = {
      {access != kModeWrite, kReads, kDeniesReading},
      {access != kModeRead, kWrites, kDeniesWriting},
      {denies_writing && share != kShareDenyWrite, kDeniesReading, kReads},
      {denies_writing, kDeniesWriting, kWrites},
  };
  // Marking comes before looking, so that of two who open at the same moment
  // at least one sees the other.
  for (const auto& claim : claims) {
    if (claim.wanted) Set(descriptor, claim.mark);
  }
  for (const auto& claim : claims) {
    if (claim.wanted && SomebodyElseHolds(descriptor, claim.conflict)) return false;
  }
  return true;
}

bool MayRead(int descriptor) { return !SomebodyElseHolds(descriptor, kDeniesReading); }

}  // namespace customsconv::posix
