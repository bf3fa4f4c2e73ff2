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
  enum class WhenMissing {
    kUseMain,
    kAsk,  // whether to create the shared file and count from one
  };

  // `environment` must outlive the store. Throws FileError when the shared file
  // cannot be created.
  NumberingStore(Environment& environment, WhenMissing when_missing);

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
  explicit NumberingLock(Environment& environment);

 private:
  std::unique_ptr<FileLock> lock_;  // null where the file system offers none
};

// Reads the main configuration again, unless it has no file.
void RereadConfiguration(Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_NUMBERING_STORE_H_
