#ifndef CUSTOMSCONV_SERVICES_EXCHANGE_LOCK_H_
#define CUSTOMSCONV_SERVICES_EXCHANGE_LOCK_H_

#include <memory>
#include <string>
#include <string_view>

#include "base/error.h"
#include "platform/host.h"

namespace customsconv {

inline constexpr std::string_view kExchangeLockFile = "veltlock.$$$";
inline constexpr std::string_view kSaveLockFile = "~ccsave.lck";

// Keeps other processes of this program out of a table folder while one saves: a file that is
// held, so that it is known whether its maker still lives. A living process is waited for (the
// user may give up at every 20 seconds), but not without end: it may be stopped. What a dead one
// left, its exchange marker too, goes.
class SaveLock {
 public:
  // `folder` ends with a separator. Throws SilentAbort when the user gives up, and FileError
  // when the file cannot be made (kCreate) or is not let go in two minutes (kOpen).
  SaveLock(Host& host, const std::string& folder);

  // False where the file system keeps no locks, so that others may hold it, too: whether what
  // stands in the folder was left by a dead process is not known there.
  [[nodiscard]] bool certain() const { return file_->certain(); }

 private:
  [[nodiscard]] std::unique_ptr<FileLock> Wait(Host& host, const std::string& path);

  std::unique_ptr<FileLock> file_;
};

// What is thrown instead of SilentAbort where people would not know why nothing came of it.
[[nodiscard]] Error WaitingGivenUp(std::string_view folder);

// Keeps two stations from writing one exchange folder at the same moment: an
// empty marker file in the folder. Taken by the constructor, which waits while
// another station's marker is there (up to 101 checks a second apart, asking the user at
// 20, 40, 60, 80 and 100 seconds) and then takes the lock over; deleted by
// Release or the destructor.
class ExchangeLock {
 public:
  // `folder` ends with a separator. Where its SaveLock is held, the marker is a second name of that
  // lock's file and so known as ours should we die. Throws SilentAbort when the user abandons
  // the operation (the other station's marker stays) and FileError when the marker cannot be made.
  ExchangeLock(Host& host, std::string_view folder);
  ~ExchangeLock();
  ExchangeLock(const ExchangeLock&) = delete;
  ExchangeLock& operator=(const ExchangeLock&) = delete;
  void Release();

 private:
  // Waits until the marker is gone or the waiting ends; the stamp of the marker that
  // may be taken over, kNoStamp when it is gone. Throws SilentAbort.
  [[nodiscard]] FileStamp Wait();
  // Makes the marker, or takes over the one of the stamp `seen`. False when
  // another station's marker is there.
  [[nodiscard]] bool Take(FileStamp seen);

  Host& host_;
  std::string path_;
  std::string twin_;  // the file of the SaveLock
  FileStamp own_ = kNoStamp;  // of the marker that was made
  bool held_ = false;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_EXCHANGE_LOCK_H_
