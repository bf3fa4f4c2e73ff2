#include "platform/full_path.h"

#include <vector>

#include "text/file_names.h"

namespace customsconv {
namespace {

// Adds the names between the separators of `path` to `names`.
void AddNames(std::string_view path, std::vector<std::string_view>& names) {
  for (std::size_t start = 0; start < path.size();) {
    std::size_t end = start;
    while (end < path.size() && !IsPathSeparator(path[end])) ++end;
    const std::string_view name = path.substr(start, end - start);
    if (name == "..") {
      if (!names.empty()) names.pop_back();
    } else if (!name.empty() && name != ".") {
      names.push_back(name);
    }
    start = end + 1;
  }
}

}  // namespace

bool IsRooted(std::string_view path) {
  return !DriveOf(path).empty() || (!path.empty() && IsPathSeparator(path[0]));
}

std::string FullPath(std::string_view path, std::string_view current_folder) {
  std::vector<std::string_view> names;
  std::string full;
  if (const std::string_view drive = DriveOf(path); !drive.empty()) {
    full = drive;
    AddNames(path.substr(drive.size()), names);
  } else if (path.size() >= 2 && IsPathSeparator(path[0]) && IsPathSeparator(path[1])) {
    full = "\\";
    AddNames(path, names);
  } else {
    full = DriveOf(current_folder);
    if (path.empty() || !IsPathSeparator(path[0])) {
      AddNames(current_folder.substr(full.size()), names);
    }
    AddNames(path, names);
  }
  for (const std::string_view name : names) full.append("\\").append(name);
  if (names.empty() || (!path.empty() && IsPathSeparator(path.back()))) full += '\\';
  return full;
}

}  // namespace customsconv
