#ifndef CUSTOMSCONV_PLATFORM_POSIX_POSIX_PROCESSES_H_
#define CUSTOMSCONV_PLATFORM_POSIX_POSIX_PROCESSES_H_

#include <string>
#include <string_view>
#include <vector>

#include "platform/processes.h"

namespace customsconv::posix {

// Starts programs of a POSIX system. Command and parameters together are one
// command line, its words separated by blanks unless in double quotes; the
// first word is a program file, found without regard to letter case, or a
// program of the PATH. Window styles mean nothing here. A program that a signal
// ended has the status 128 plus the signal's number.
class PosixProcesses : public Processes {
 public:
  [[nodiscard]] std::optional<int> Start(const ProgramStart& start) override;
  // The desktop's opener, where there is one.
  [[nodiscard]] std::string AssociatedProgram(std::string_view file) const override;
  [[nodiscard]] std::string ExecutableFolder() const override;
};

// The words of a command line, without the quotes.
[[nodiscard]] std::vector<std::string> CommandWords(std::string_view line);

}  // namespace customsconv::posix

#endif  // CUSTOMSCONV_PLATFORM_POSIX_POSIX_PROCESSES_H_
