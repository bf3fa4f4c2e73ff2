#ifndef CUSTOMSCONV_SERVICES_KEPT_TODAY_H_
#define CUSTOMSCONV_SERVICES_KEPT_TODAY_H_

#include <optional>

#include "platform/clock.h"

namespace customsconv {

// Today's date, taken from the clock at the first call and kept for the life of the
// process, so that one run sees one date even across midnight.
class KeptToday {
 public:
  explicit KeptToday(const Clock& clock) : clock_(clock) {}
  // `refresh` asks the clock again.
  Date Today(bool refresh = false) {
    if (refresh || !kept_) kept_ = clock_.Today();
    return *kept_;
  }

 private:
  const Clock& clock_;
  std::optional<Date> kept_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_KEPT_TODAY_H_
