#include "platform/full_path.h"

#include <vector>

namespace customsconv {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool IsLatinLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// Length of "C:", or 0.
std::size_t DriveLength(std::string_view path) {
  return path.size() >= 2 && IsLatinLetter(path[0]) && path[1] == ':' ? 2 : 0;
}

// Adds the names between the separators of `path` to `names`.
void AddNames(std::string_view path, std::vector<std::string_view>& names) {
  for (std::size_t start = 0; start < path.size();) {
    std::size_t end = start;
    while (end < path.size() && !IsSeparator(path[end])) ++end;
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
  return DriveLength(path) > 0 || (!path.empty() && IsSeparator(path[0]));
}

std::string FullPath(std::string_view path, std::string_view current_folder) {
  std::vector<std::string_view> names;
  std::string full;
  if (const std::size_t drive = DriveLength(path); drive > 0) {
    full = path.substr(0, drive);
    AddNames(path.substr(drive), names);
  } else if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1])) {
    full = "\\";
    AddNames(path, names);
  } else {
    const std::size_t current_drive = DriveLength(current_folder);
    full = current_folder.substr(0, current_drive);
    if (path.empty() || !IsSeparator(path[0])) {
      AddNames(current_folder.substr(current_drive), names);
    }
    AddNames(path, names);
  }
  for (const std::string_view name : names) full.append("\\").append(name);
  if (names.empty() || (!path.empty() && IsSeparator(path.back()))) full += '\\';
  return full;
}

}  // namespace customsconv
