#ifndef CUSTOMSCONV_CLI_USAGE_H_
#define CUSTOMSCONV_CLI_USAGE_H_

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace customsconv::cli {

// The one of `words` that `typed` was most likely meant to be; empty when none is near.
[[nodiscard]] std::string NearestWord(std::string_view typed,
                                      const std::vector<std::string>& words);

// Which word of the command line the program does not know, and the nearest that it does; empty
// when it knows all commands and options. `arguments` without the program's name.
[[nodiscard]] std::string UnknownWord(const CLI::App& app,
                                      const std::vector<std::string>& arguments);

// "help COMMAND" as it is asked for otherwise: "COMMAND --help".
[[nodiscard]] std::vector<std::string> WithoutHelpCommand(std::vector<std::string> arguments);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_USAGE_H_
