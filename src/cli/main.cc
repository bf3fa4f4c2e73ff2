// The program: the real world handed to the command line.

#include "cli/interrupt.h"
#include "cli/run.h"
#include "cli/standard_output.h"
#include "cli/texts.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/memory.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_processes.h"

int main(int argc, char** argv) {
  using namespace customsconv;
  posix::OpenStandardDescriptors();
  posix::KeepFreedMemory();
  posix::PosixFiles files(&cli::StopIfInterrupted);
  posix::PosixClock clock;
  posix::PosixProcesses processes;
  cli::StandardOutput output;
  cli::WatchForInterrupt();
  const cli::ExitStatus status =
      cli::Run({argv + 1, argv + argc}, {files, clock, processes}, output);
  if (!output.Finish()) {
    output.Remark(cli::Say(cli::texts::kResultNotWritten) + "\n");
    return static_cast<int>(cli::ExitStatus::kError);
  }
  return static_cast<int>(status);
}
