#include "services/program_paths.h"

#include <algorithm>

#include "text/blanks.h"
#include "text/file_names.h"

namespace customsconv {
namespace {

// Keeps a "\\" at the very start, where it announces a network path.
void ReduceDoubledSeparators(std::string& path) {
  if (path.empty()) return;
  const auto end = std::unique(path.begin() + 1, path.end(),
                               [](char a, char b) { return a == '\\' && b == '\\'; });
  path.erase(end, path.end());
}

}  // namespace

std::string BasePath(const Environment& environment) {
  const std::string& base = environment.base_path;
  if (base.empty() || base == ".\\" || base == "./") {
    return environment.host.processes.ExecutableFolder();
  }
  return base;
}

std::string ExpandProgramPath(std::string_view path, const Environment& environment) {
  std::string whole = ReplaceChar(path, '/', '\\');
  const bool from_root = whole.starts_with('\\');
  if (from_root && !whole.starts_with("\\\\")) {
    whole.insert(0, DriveOf(BasePath(environment)));
  } else if (!from_root && DriveOf(whole).empty()) {
    whole.insert(0, BasePath(environment));
  }
  ReduceDoubledSeparators(whole);
  return whole;
}

}  // namespace customsconv
