#include "text/file_names.h"

#include <cstddef>

namespace customsconv {
namespace {

// Offset of the "." that begins the extension, npos when there is none.
std::size_t ExtensionStart(std::string_view path) {
  const std::size_t folder = FolderPart(path).size();
  const std::size_t point = path.substr(folder).rfind('.');
  return point == path.npos ? path.npos : folder + point;
}

std::string WithExtension(std::string_view name, std::string_view extension) {
  std::string result(name);
  if (!extension.empty() && extension.front() != '.') result += '.';
  return result.append(extension);
}

bool IsLatinLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

std::string_view DriveOf(std::string_view path) {
  const bool has_drive = path.size() >= 2 && path[1] == ':' && IsLatinLetter(path[0]);
  return path.substr(0, has_drive ? 2 : 0);
}

std::string WithTrailingBackslash(std::string_view path) {
  std::string result(path);
  if (!result.empty() && !IsPathSeparator(result.back())) result += '\\';
  return result;
}

std::string ForceExtension(std::string_view name, std::string_view extension) {
  return ExtensionStart(name) == name.npos ? WithExtension(name, extension) : std::string(name);
}

std::string ChangeExtension(std::string_view name, std::string_view extension) {
  return WithExtension(name.substr(0, ExtensionStart(name)), extension);
}

std::string_view FolderPart(std::string_view path) {
  const std::size_t drive = DriveOf(path).size();
  std::size_t size = path.size();
  while (size > drive && !IsPathSeparator(path[size - 1])) --size;
  return path.substr(0, size);
}

std::string_view FileNameOf(std::string_view path) { return path.substr(FolderPart(path).size()); }

std::string_view ExtractFileBaseName(std::string_view path) {
  const std::string_view name = FileNameOf(path);
  return name.substr(0, name.rfind('.'));
}

std::string ExtractFileFolder(std::string_view path) {
  std::string_view folder = FolderPart(path);
  const bool is_root = folder.size() == DriveOf(folder).size() + 1;  // "\" or "C:\"
  if (!folder.empty() && IsPathSeparator(folder.back()) && !is_root) folder.remove_suffix(1);
  return std::string(folder);
}

}  // namespace customsconv
