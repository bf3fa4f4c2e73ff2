#ifndef CUSTOMSCONV_BENCH_PEAK_MEMORY_H_
#define CUSTOMSCONV_BENCH_PEAK_MEMORY_H_

#include <cstddef>

namespace customsconv::bench {

// The largest resident size of the process since construction, above what it was then.
class PeakMemory {
 public:
  PeakMemory();
  [[nodiscard]] std::size_t Bytes() const;

 private:
  std::size_t before_;
};

}  // namespace customsconv::bench

#endif  // CUSTOMSCONV_BENCH_PEAK_MEMORY_H_
