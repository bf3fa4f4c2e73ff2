#ifndef CUSTOMSCONV_CLI_RUN_H_
#define CUSTOMSCONV_CLI_RUN_H_

#include <string>
#include <vector>

#include "cli/output.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/processes.h"

namespace customsconv::cli {

// What the program stands on; the command line brings its own dialogs.
struct World {
  Files& files;
  Clock& clock;
  Processes& processes;
};

// Runs the program with these arguments (without the program's name, UTF-8).
[[nodiscard]] ExitStatus Run(const std::vector<std::string>& arguments, World world,
                             Output& output);

}  // namespace customsconv::cli

#endif  // CUSTOMSCONV_CLI_RUN_H_
