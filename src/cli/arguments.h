#ifndef CUSTOMSCONV_CLI_ARGUMENTS_H_
#define CUSTOMSCONV_CLI_ARGUMENTS_H_

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/short_text.h"

namespace customsconv::cli {

// Arguments that cannot work; what() is UTF-8.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A path of the command line (UTF-8) as the library takes it: code page 1251, at most 255 bytes.
// Throws UsageError for a path that is no such text.
[[nodiscard]] ShortText FileArgument(std::string_view utf8);
[[nodiscard]] std::vector<ShortText> FileArguments(const std::vector<std::string>& utf8);
// The same with a closing separator.
[[nodiscard]] ShortText FolderArgument(std::string_view utf8);
// A text in code page 1251; throws UsageError naming it.
[[nodiscard]] std::string WinArgument(std::string_view utf8);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_ARGUMENTS_H_
