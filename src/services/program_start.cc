// Starts programs of the host system; those without a folder are looked for in the base folder.

#include "services/program_start.h"

#include <string>

#include "services/file_services.h"
#include "services/program_paths.h"
#include "services/run_log.h"
#include "text/file_names.h"

namespace customsconv {

std::string CommandWord(std::string_view text) {
  const bool quoted = text.empty() || text.find(' ') != std::string_view::npos;
  const std::string_view mark = quoted ? "\"" : "";
  return std::string(mark).append(text).append(mark);
}

std::optional<int> ExecFile(std::string_view command, std::string_view parameters,
                            WindowStyle window, bool wait, Environment& environment) {
  const Files& files = environment.host.files;
  Processes& processes = environment.host.processes;
  LogLine("ExecFile(" + std::string(command) + ")", "", environment.host);

  std::string file(command);
  std::string folder = ExtractFileFolder(command);
  if (folder.empty()) {
    folder = BasePath(environment);
    const std::string in_folder = WithTrailingBackslash(folder).append(command);
    if (files.Exists(in_folder)) file = in_folder;
  }
  const bool exists = files.Exists(file);
  ProgramStart start{exists ? CommandWord(file) : file, std::string(parameters), folder, window,
                     wait};
  if (const auto status = processes.Start(start)) return status;

  const std::string program = processes.AssociatedProgram(file);
  if (program.empty()) return std::nullopt;
  start.command = CommandWord(program);
  start.parameters = CommandWord(ShortPathName(files, file));
  if (!parameters.empty()) start.parameters.append(" ").append(parameters);
  return processes.Start(start);
}

}  // namespace customsconv
