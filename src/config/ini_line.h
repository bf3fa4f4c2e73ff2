#ifndef CUSTOMSCONV_CONFIG_INI_LINE_H_
#define CUSTOMSCONV_CONFIG_INI_LINE_H_

#include <optional>
#include <string_view>

#include "base/lifetime.h"

namespace customsconv {

// What single lines of an ini file mean. The views point into the line.

struct IniKeyLine {
  std::string_view key;    // trimmed, at most 255 bytes
  std::string_view value;  // trimmed, any length
};

// "[name] anything": the name trimmed, empty when the "]" is missing among the
// first 255 bytes.
[[nodiscard]] std::optional<std::string_view> ParseSectionHeader(
    std::string_view line CUSTOMSCONV_LIFETIME_BOUND);
// "key = value", split at the first "=".
[[nodiscard]] std::optional<IniKeyLine> ParseKeyLine(
    std::string_view line CUSTOMSCONV_LIFETIME_BOUND);
// The key of ";key=value", a setting that is switched off. Anything longer than
// 28 characters between ";" and "=" is a remark.
[[nodiscard]] std::optional<std::string_view> ParseCommentedKey(
    std::string_view line CUSTOMSCONV_LIFETIME_BOUND);

}  // namespace customsconv

#endif  // CUSTOMSCONV_CONFIG_INI_LINE_H_
