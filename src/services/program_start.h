#ifndef CUSTOMSCONV_SERVICES_PROGRAM_START_H_
#define CUSTOMSCONV_SERVICES_PROGRAM_START_H_

#include <optional>
#include <string>
#include <string_view>

#include "services/environment.h"

namespace customsconv {

// `text` as one word of a command line, in quotes where it holds a blank.
[[nodiscard]] std::string CommandWord(std::string_view text);

// Starts the program file `command` with the command line `parameters` in the program's own
// folder; one that names no folder is looked for in the base folder, which is its working folder,
// before it is looked for where the system keeps its programs. Where the file does not start by
// itself, the program associated with its type is started with it. The exit status, 0 when not
// waiting; empty when nothing could be started.
std::optional<int> ExecFile(std::string_view command, std::string_view parameters,
                            WindowStyle window, bool wait, Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_PROGRAM_START_H_
