#ifndef CUSTOMSCONV_TESTS_SUPPORT_FAKE_CLOCK_H_
#define CUSTOMSCONV_TESTS_SUPPORT_FAKE_CLOCK_H_

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/clock.h"

namespace customsconv {

// A clock that stands still until a test moves it. It starts on 15 March 2024,
// 10:30. Sleep moves it by what was slept and then runs `on_sleep`.
class FakeClock : public Clock {
 public:
  [[nodiscard]] DateTime Now() const override { return static_cast<double>(now_) / kDay; }
  [[nodiscard]] Date Today() const override { return static_cast<Date>(now_ / kDay); }
  [[nodiscard]] std::uint64_t Ticks() const override { return ticks_; }
  void Sleep(std::uint32_t milliseconds) override {
    Advance(milliseconds);
    slept.push_back(milliseconds);
    if (on_sleep) on_sleep(milliseconds);
  }

  // Sets date and time of day; the ticks go on counting from where they were.
  void Set(CalendarDay day, int hour = 0, int minute = 0, int second = 0) {
    now_ = DateOf(day).value() * kDay + ((hour * 60LL + minute) * 60 + second) * 1000;
  }
  void Advance(std::int64_t milliseconds) {
    now_ += milliseconds;
    ticks_ += static_cast<std::uint64_t>(milliseconds);
  }

  std::vector<std::uint32_t> slept;  // every Sleep, in order
  std::function<void(std::uint32_t)> on_sleep;

 private:
  static constexpr std::int64_t kDay = 24LL * 60 * 60 * 1000;
  std::int64_t now_ = DateOf({2024, 3, 15}).value() * kDay + (10LL * 60 + 30) * 60 * 1000;
  std::uint64_t ticks_ = 1000;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_FAKE_CLOCK_H_
