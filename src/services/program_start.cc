#include "services/program_start.h"

#include <string>

#include "services/program_paths.h"
#include "services/run_log.h"
#include "text/file_names.h"

namespace customsconv {

std::optional<int> ExecFile(std::string_view command, std::string_view parameters,
                            WindowStyle window, bool wait, Environment& environment) {
  Processes& processes = environment.host.processes;
  LogLine("ExecFile(" + std::string(command) + ")", "", environment.host);

  ProgramStart start{std::string(command), std::string(parameters), ExtractFileFolder(command),
                     window, wait};
  if (start.folder.empty()) start.folder = BasePath(environment);
  if (const auto status = processes.Start(start)) return status;

  const std::string program = processes.AssociatedProgram(command);
  if (program.empty()) return std::nullopt;
  start.parameters = parameters.empty() ? start.command : start.command + ' ' + start.parameters;
  start.command = program;
  return processes.Start(start);
}

}  // namespace customsconv
