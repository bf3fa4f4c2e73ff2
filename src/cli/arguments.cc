#include "cli/arguments.h"

#include <optional>

#include "base/unicode.h"
#include "cli/texts.h"
#include "text/file_names.h"

namespace customsconv::cli {
namespace {

ShortText Checked(const std::string& path, std::string_view utf8) {
  if (path.size() > ShortText::kMaxSize) {
    throw UsageError(Say(texts::kPathTooLong, {utf8}));
  }
  return ShortText::Cut(path);  // nothing is lost
}

}  // namespace

std::string WinArgument(std::string_view utf8) {
  const std::optional<std::string> text = WinFromUtf8(utf8);
  // What code page 1251 lacks comes out as "?": only a round trip proves a name.
  if (!text || Utf8FromWin(*text) != utf8) {
    throw UsageError(Say(texts::kNotInCodePage, {utf8}));
  }
  return *text;
}

ShortText FileArgument(std::string_view utf8) { return Checked(WinArgument(utf8), utf8); }

std::vector<ShortText> FileArguments(const std::vector<std::string>& utf8) {
  std::vector<ShortText> files;
  for (const std::string& file : utf8) files.push_back(FileArgument(file));
  return files;
}

ShortText FolderArgument(std::string_view utf8) {
  std::string path = WinArgument(utf8);
  if (!path.empty() && !IsPathSeparator(path.back())) path += '/';
  return Checked(path, utf8);
}

}  // namespace customsconv::cli
