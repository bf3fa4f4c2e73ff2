#ifndef CUSTOMSCONV_SERVICES_PROGRAM_START_H_
#define CUSTOMSCONV_SERVICES_PROGRAM_START_H_

#include <optional>
#include <string_view>

#include "services/environment.h"

namespace customsconv {

// Starts `command` with `parameters` in the command's own folder, or in the base
// folder when it names none. Where it does not start by itself, the program
// associated with its type is started with it. The exit status, 0 when not
// waiting; empty when nothing could be started.
std::optional<int> ExecFile(std::string_view command, std::string_view parameters,
                            WindowStyle window, bool wait, Environment& environment);

}  // namespace customsconv

#endif  // CUSTOMSCONV_SERVICES_PROGRAM_START_H_
