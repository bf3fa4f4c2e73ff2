#include "cli/texts.h"

namespace customsconv::cli {

std::string Say(Text text, std::initializer_list<std::string_view> values) {
  std::string said;
  for (std::size_t i = 0; i < text.english.size(); ++i) {
    const char c = text.english[i];
    const std::size_t place = i + 1 < text.english.size() && c == '%'
                                  ? static_cast<std::size_t>(text.english[i + 1] - '1')
                                  : values.size();
    if (place < values.size()) {
      said += values.begin()[place];
      ++i;
    } else {
      said += c;
    }
  }
  return said;
}

}  // namespace customsconv::cli
