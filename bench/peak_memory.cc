#include "peak_memory.h"

#include <malloc.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>

namespace customsconv::bench {

namespace {

// A line of the process's status: "VmHWM:   1234 kB".
std::size_t StatusBytes(std::string_view key) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    std::size_t kilobytes = 0;
    if (word == key && status >> kilobytes) return kilobytes << 10;
  }
  return 0;
}

}  // namespace

PeakMemory::PeakMemory() {
  malloc_trim(0);  // what was freed before must not hide what is taken now
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak counts from here
  before_ = StatusBytes("VmRSS:");
}

std::size_t PeakMemory::Bytes() const {
  return StatusBytes("VmHWM:") - std::min(before_, StatusBytes("VmHWM:"));
}

}  // namespace customsconv::bench
