#include "cli/standard_output.h"

#include <unistd.h>

#include <cstdio>

namespace customsconv::cli {

void StandardOutput::Result(std::string_view bytes) {
  std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

// Results that belong before the remark are on the screen first.
void StandardOutput::Remark(std::string_view bytes) {
  std::fflush(stdout);
  std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

// Finish tells whether that went well.
void StandardOutput::Flush() { std::fflush(stdout); }

bool StandardOutput::IsTerminal() const { return isatty(STDERR_FILENO) == 1; }

bool StandardOutput::ReadAnswer(std::string& line) {
  line.clear();
  if (isatty(STDIN_FILENO) != 1) return false;
  for (int c = std::fgetc(stdin); c != EOF; c = std::fgetc(stdin)) {
    if (c == '\n') return true;
    line += static_cast<char>(c);
  }
  return !line.empty();
}

bool StandardOutput::Finish() { return std::fflush(stdout) == 0 && std::ferror(stdout) == 0; }

}  // namespace customsconv::cli
