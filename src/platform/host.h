#ifndef CUSTOMSCONV_PLATFORM_HOST_H_
#define CUSTOMSCONV_PLATFORM_HOST_H_

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/processes.h"

namespace customsconv {

// The world outside the program, handed in by whoever runs it. Borrowed: all
// four must outlive their user.
struct Host {
  Files& files;
  Clock& clock;
  Dialogs& dialogs;
  Processes& processes;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_HOST_H_
