#ifndef CUSTOMSCONV_TESTS_HOSTS_RECORDED_FUNCTIONS_H_
#define CUSTOMSCONV_TESTS_HOSTS_RECORDED_FUNCTIONS_H_

#include <string>

namespace customsconv {

enum class Reply { kFalse, kTrue, kError };

// Stands behind the exports in place of the library: does what `reply` says and
// notes how it was called.
struct Recording {
  Reply reply = Reply::kTrue;
  std::string call;  // "Function|argument|argument|..."
  bool stack_aligned = false;
  int floating_point_traps = 0;
};

__attribute__((visibility("default"))) Recording& TheRecording();

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_HOSTS_RECORDED_FUNCTIONS_H_
