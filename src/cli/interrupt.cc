#include "cli/interrupt.h"

#include <algorithm>
#include <atomic>
#include <csignal>

namespace customsconv::cli {
namespace {

// A signal handler reaches nothing but globals.
std::atomic<bool> noted{false};
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void NoteInterrupt(int) { noted = true; }

constexpr std::uint32_t kSlice = 100;  // milliseconds between two looks

}  // namespace

void WatchForInterrupt() {
  std::signal(SIGINT, &NoteInterrupt);
  std::signal(SIGTERM, &NoteInterrupt);
  // A reader that goes away (`customsconv … | head`) must not end a save half-way; the
  // output tells in the end that it could not be written.
  std::signal(SIGPIPE, SIG_IGN);
  // A file that may not grow is an error like a full disk, not the end of the program.
  std::signal(SIGXFSZ, SIG_IGN);
}

void StopIfInterrupted() {
  if (noted) throw Interrupted();
}

void InterruptibleClock::Sleep(std::uint32_t milliseconds) {
  while (milliseconds > 0) {
    pauses_.Reach();
    const std::uint32_t slice = std::min(milliseconds, kSlice);
    clock_.Sleep(slice);
    milliseconds -= slice;
  }
  pauses_.Reach();
}

}  // namespace customsconv::cli
