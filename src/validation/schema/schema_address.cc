#include "validation/schema/schema_address.h"

#include <libxml/uri.h>

#include <memory>

#include "base/unicode.h"
#include "text/file_names.h"
#include "text/words.h"

namespace customsconv::schema {
namespace {

// Addresses travel through libxml2, which wants them as UTF-8 with %XX for most other bytes; files
// are named in code page 1251.
struct XmlFree {
  void operator()(void* text) const { xmlFree(text); }
};

const xmlChar* XmlText(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

}  // namespace

std::string AddressOf(std::string_view file_name) {
  const std::unique_ptr<xmlChar, XmlFree> escaped(
      xmlURIEscapeStr(XmlText(Utf8FromWin(file_name)), XmlText("/")));
  return std::string(kAddressScheme) + reinterpret_cast<const char*>(escaped.get());
}

std::optional<std::string> FileBelowFolder(std::string_view address) {
  if (!address.starts_with(kAddressScheme)) return std::nullopt;
  const std::string escaped(address.substr(kAddressScheme.size()));
  const std::unique_ptr<char, XmlFree> name(
      xmlURIUnescapeString(escaped.c_str(), static_cast<int>(escaped.size()), nullptr));
  std::optional<std::string> file = WinFromUtf8(name.get());
  if (!file || file->empty() || IsPathSeparator(file->front())) return std::nullopt;
  for (const std::string_view part : Words(*file, CharSet("/\\"))) {
    if (part == ".." || part.find(':') != std::string_view::npos) return std::nullopt;
  }
  return file;
}

std::optional<std::string> ReferredFile(std::string_view location, std::string_view from_file) {
  const std::unique_ptr<xmlChar, XmlFree> address(
      xmlBuildURI(XmlText(std::string(location)), XmlText(AddressOf(from_file))));
  if (address == nullptr) return std::nullopt;
  return FileBelowFolder(reinterpret_cast<const char*>(address.get()));
}

}  // namespace customsconv::schema
