#ifndef CUSTOMSCONV_CLI_INTERRUPT_H_
#define CUSTOMSCONV_CLI_INTERRUPT_H_

#include <functional>

#include "platform/clock.h"

namespace customsconv::cli {

// The person pressed Ctrl-C (or the system asks the program to end). Deliberately no
// std::exception: what ends a run must not be taken for an error of one document.
struct Interrupted {};

// From now on Ctrl-C is noted instead of ending the process; places where nothing is half done
// ask for it.
void WatchForInterrupt();
// Throws Interrupted when it was noted.
void StopIfInterrupted();

// Places where nothing is half done, reached again and again also while others are waited for: the
// run may end there, and the command does what must not wait for its next step. What it does may
// throw what is no std::exception.
struct Pauses {
  std::function<void()> now_and_then = [] {};
  std::function<void()> before_long = [] {};  // before a question or a long piece of work

  // Throws Interrupted when that was noted.
  void Reach() const {
    StopIfInterrupted();
    now_and_then();
  }
};

// A clock whose waiting is a pause.
class InterruptibleClock : public Clock {
 public:
  InterruptibleClock(Clock& clock, const Pauses& pauses) : clock_(clock), pauses_(pauses) {}
  [[nodiscard]] DateTime Now() const override { return clock_.Now(); }
  [[nodiscard]] Date Today() const override { return clock_.Today(); }
  [[nodiscard]] std::uint64_t Ticks() const override { return clock_.Ticks(); }
  void Sleep(std::uint32_t milliseconds) override;

 private:
  Clock& clock_;
  const Pauses& pauses_;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_INTERRUPT_H_
