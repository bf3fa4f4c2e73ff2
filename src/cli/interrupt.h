#ifndef CUSTOMSCONV_CLI_INTERRUPT_H_
#define CUSTOMSCONV_CLI_INTERRUPT_H_

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

// A clock whose waiting ends with Interrupted.
class InterruptibleClock : public Clock {
 public:
  explicit InterruptibleClock(Clock& clock) : clock_(clock) {}
  [[nodiscard]] DateTime Now() const override { return clock_.Now(); }
  [[nodiscard]] Date Today() const override { return clock_.Today(); }
  [[nodiscard]] std::uint64_t Ticks() const override { return clock_.Ticks(); }
  void Sleep(std::uint32_t milliseconds) override;

 private:
  Clock& clock_;
};

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_INTERRUPT_H_
