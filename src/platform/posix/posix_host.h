#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_HOST_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_HOST_H_

#include "base/lifetime.h"
#include "platform/host.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_processes.h"
#include "platform/posix/system_names.h"  // names between the system and code page 1251

namespace customsconv {

// The world of a POSIX system, with the given dialogs. Usable wherever a Host is
// wanted; must outlive what it was handed to, and the dialogs must outlive it.
class PosixHost {
 public:
  explicit PosixHost(Dialogs& dialogs) : host_{files_, clock_, dialogs, processes_} {}
  PosixHost(const PosixHost&) = delete;
  PosixHost& operator=(const PosixHost&) = delete;

  operator Host&() { return host_; }  // implicit on purpose
  [[nodiscard]] Host& host() CUSTOMSCONV_LIFETIME_BOUND { return host_; }

 private:
  posix::PosixFiles files_;
  posix::PosixClock clock_;
  posix::PosixProcesses processes_;
  Host host_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_HOST_H_
