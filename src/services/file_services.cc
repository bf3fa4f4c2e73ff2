// Small services around files that several folders above need.

#include "services/file_services.h"

#include <cmath>
#include <cstdint>

#include "text/blanks.h"
#include "text/file_names.h"

namespace customsconv {

std::string ShortPathName(const Files& files, std::string_view path) {
  const std::string name = files.ShortName(path);
  return std::string(name.empty() ? path : Trim(name));
}

std::string UniqueTempFileName(const Files& files, const Clock& clock, std::string_view folder,
                               std::string_view prefix, std::string_view extension) {
  constexpr std::uint32_t kNames = 100'000'000;
  const double now = clock.Now();
  auto number = static_cast<std::uint32_t>((now - std::floor(now)) * kNames);
  while (true) {
    std::string name = WithTrailingBackslash(folder).append(prefix);
    name += PadLeft(std::to_string(number % kNames), '0', 8);
    name.append(1, '.').append(extension);
    if (!files.Exists(name)) return name;
    ++number;
  }
}

std::string ReadFileText(const Files& files, std::string_view name, std::size_t limit) {
  return files.Read(name, limit);
}

void WriteFileText(Files& files, std::string_view text, std::string_view name) {
  files.Replace(name, text);
}

}  // namespace customsconv
