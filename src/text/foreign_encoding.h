#ifndef CUSTOMSCONV_TEXT_FOREIGN_ENCODING_H_
#define CUSTOMSCONV_TEXT_FOREIGN_ENCODING_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace customsconv {

// A file that was saved in another encoding than the single-byte code page in which it is read:
// its Russian words say nothing to the system then.
struct ForeignEncoding {
  std::string_view name;  // "UTF-8", "UTF-16" or, for its line ends, "LF"
  std::size_t line = 0;   // the first in which it shows, from 1
};
struct ForeignFile {
  std::string file;
  ForeignEncoding encoding;
};

// What the bytes of a file show of its encoding. Russian text of a code page is no UTF-8 from its
// first word on, so the right files cost a look at their beginning.
[[nodiscard]] std::optional<ForeignEncoding> ForeignEncodingOf(std::string_view bytes);

// The first LF without a CR in front of it, which ends no line of a catalogue.
[[nodiscard]] std::optional<ForeignEncoding> LoneLineFeedIn(std::string_view bytes);

}  // namespace customsconv

#endif  // CUSTOMSCONV_TEXT_FOREIGN_ENCODING_H_
