#ifndef CUSTOMSCONV_TESTS_SUPPORT_FAKE_PROCESSES_H_
#define CUSTOMSCONV_TESTS_SUPPORT_FAKE_PROCESSES_H_

#include <deque>
#include <string>
#include <vector>

#include "platform/processes.h"

namespace customsconv {

// Starts nothing and records what was asked for.
class FakeProcesses : public Processes {
 public:
  [[nodiscard]] std::optional<int> Start(const ProgramStart& start) override {
    starts.push_back(start);
    if (results.empty()) return 0;
    const std::optional<int> result = results.front();
    results.pop_front();
    return result;
  }
  [[nodiscard]] std::string AssociatedProgram(std::string_view) const override {
    return associated_program;
  }
  [[nodiscard]] std::string ExecutableFolder() const override { return executable_folder; }

  std::vector<ProgramStart> starts;
  std::deque<std::optional<int>> results;  // of the next starts; 0 when used up
  std::string associated_program;          // empty: none
  std::string executable_folder = "C:\\PROG\\";
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_TESTS_SUPPORT_FAKE_PROCESSES_H_
