#ifndef CUSTOMSCONV_PLATFORM_CLOCK_H_
#define CUSTOMSCONV_PLATFORM_CLOCK_H_

#include <cstdint>

#include "base/date_time.h"

namespace customsconv {

// Local time. Nothing outside src/platform/ asks the time in another way.
class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual DateTime Now() const = 0;
  [[nodiscard]] virtual Date Today() const = 0;
  // Milliseconds since some fixed moment, never running backwards.
  [[nodiscard]] virtual std::uint64_t Ticks() const = 0;
  virtual void Sleep(std::uint32_t milliseconds) = 0;

  [[nodiscard]] int ThisYear() const { return DayOf(Today()).year; }
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_CLOCK_H_
