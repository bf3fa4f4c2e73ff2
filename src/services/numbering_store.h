#ifndef CUSTOMSCONV_SERVICES_NUMBERING_STORE_H_
#define CUSTOMSCONV_SERVICES_NUMBERING_STORE_H_

#include <memory>
#include <optional>
#include <string>

#include "config/configuration.h"
#include "services/environment.h"

namespace customsconv {

// The configuration that holds the counters, opened for one operation so that
// other stations see each change at once: the counter file that the stations
// share ([System] LastNumsFile), or the main configuration where none is named
// or it is missing.
class NumberingStore {
 public:
  // `environment` must outlive the store.
  explicit NumberingStore(Environment& environment);

  TConfiguration& operator*() { return shared_ ? *shared_ : main_; }
  TConfiguration* operator->() { return &**this; }

 private:
  TConfiguration& main_;
  std::unique_ptr<TConfiguration> shared_;  // null when the store is the main one
};

// Keeps other processes from drawing numbers as long as it lives. Where the
// store is the main configuration, that is read again first: it may be older than the
// counters that others wrote. Must not be nested; locks the folder of the store.
class NumberingLock {
 public:
  // `environment` must outlive the lock.
  explicit NumberingLock(Environment& environment);

  // Where the shared counter file is missing, asks whether to create it and count from one.
  // While the question stands open the lock is not held, so that no other station waits for the
  // answer; a store that was opened before is out of date afterwards. Throws FileError when the
  // file cannot be created.
  void OfferSharedFile();

 private:
  void Take();
  [[nodiscard]] bool SharedFileIsMissing() const;

  Environment& environment_;
  std::string shared_file_;         // empty: none is named
  std::unique_ptr<FileLock> lock_;  // null where the file system offers none
};

// Reads the main configuration again, unless it has no file.
void RereadConfiguration(Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_NUMBERING_STORE_H_
