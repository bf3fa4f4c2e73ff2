#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_CLOCK_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_CLOCK_H_

#include "platform/clock.h"

namespace customsconv::posix {

// The system's clock in the time zone of the process.
class PosixClock : public Clock {
 public:
  [[nodiscard]] DateTime Now() const override;
  [[nodiscard]] Date Today() const override;
  [[nodiscard]] std::uint64_t Ticks() const override;
  void Sleep(std::uint32_t milliseconds) override;
};

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_CLOCK_H_
