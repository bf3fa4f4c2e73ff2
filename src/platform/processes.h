#ifndef CUSTOMSCONV_PLATFORM_PROCESSES_H_
#define CUSTOMSCONV_PLATFORM_PROCESSES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace customsconv {

enum class WindowStyle : std::uint8_t {
  kNormal,
  kMinimised,
  kMaximised,
  kHidden,
  kMinimisedInactive,
  kShownInactive,
};

// A program to start, all texts in code page 1251.
struct ProgramStart {
  std::string command;
  std::string parameters;
  std::string folder;  // working folder of the new process
  WindowStyle window = WindowStyle::kNormal;
  bool wait = false;  // until the process has ended
};

class Processes {
 public:
  virtual ~Processes() = default;
  // The exit status (0 when not waiting); empty when the start failed.
  [[nodiscard]] virtual std::optional<int> Start(const ProgramStart& start) = 0;
  // The program associated with the type of `file`; empty when there is none.
  [[nodiscard]] virtual std::string AssociatedProgram(std::string_view file) const = 0;
  // Folder of the host executable, with a closing separator.
  [[nodiscard]] virtual std::string ExecutableFolder() const = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_PLATFORM_PROCESSES_H_
