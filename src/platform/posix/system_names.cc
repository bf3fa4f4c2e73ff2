#include "platform/posix/system_names.h"

#include <sys/stat.h>

#include <algorithm>

#include "base/letter_case.h"
#include "base/unicode.h"
#include "platform/posix/folder_listing.h"

namespace customsconv::posix {
namespace {

bool Exists(const std::string& name) {
  struct stat status {};
  return ::lstat(name.c_str(), &status) == 0;
}

// The entry of `folder` that equals `part` but for letter case; empty if none.
std::string MatchIn(const std::string& folder, std::string_view part) {
  std::string best;
  FolderListing listing(folder.empty() ? "." : folder);
  while (const dirent* entry = listing.Next()) {
    const std::string_view stored = entry->d_name;
    if (!best.empty() && best <= stored) continue;
    const auto name = NameFromSystem(stored);
    if (name && SameTextRu(*name, part)) best = stored;
  }
  return best;
}

}  // namespace

std::string SystemNameAsWritten(std::string_view path) {
  // A zero byte would end the name early for the system: its picture stands in
  // for it, so that such a name leads nowhere else.
  constexpr std::string_view kPictureOfZero = "\xE2\x90\x80";
  std::string name = Utf8FromWin(path);
  std::replace(name.begin(), name.end(), '\\', '/');
  for (std::size_t zero = name.find('\0'); zero != name.npos; zero = name.find('\0', zero)) {
    name.replace(zero, 1, kPictureOfZero);
  }
  return name;
}

std::string SystemName(std::string_view path) {
  const std::string written = SystemNameAsWritten(path);
  if (Exists(written)) return written;
  std::string found;  // what exists of the path, a closing "/" included
  std::size_t start = 0;
  while (start < written.size()) {
    const std::size_t end = std::min(written.find('/', start), written.size());
    const std::string part = written.substr(start, end - start);
    if (!part.empty() && !Exists(found + part)) {
      const std::string match = MatchIn(found, WinFromUtf8(part).value_or(part));
      if (match.empty()) return found + written.substr(start);
      found += match;
    } else {
      found += part;
    }
    if (end < written.size()) found += '/';
    start = end + 1;
  }
  return found;
}

std::optional<std::string> NameFromSystem(std::string_view name) {
  auto win = WinFromUtf8(name);
  if (!win || Utf8FromWin(*win) != name) return std::nullopt;
  return win;
}

std::string FolderOf(const std::string& name) {
  const std::size_t separator = name.rfind('/');
  if (separator == name.npos) return ".";
  return separator == 0 ? "/" : name.substr(0, separator);
}

}  // namespace customsconv::posix
