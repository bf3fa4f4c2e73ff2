#ifndef CUSTOMSCONV_CATALOGUE_TEXT_LINES_H_
#define CUSTOMSCONV_CATALOGUE_TEXT_LINES_H_

#include <cstddef>
#include <string_view>

namespace customsconv {

// Walks the lines of a text that is in memory as a whole, by the line rule of TReadStream: a
// line ends at CR; one LF directly behind it belongs to the line end, any other LF to the line.
class TextLines {
 public:
  // The lines point into `text`.
  explicit TextLines(std::string_view text) : text_(text) {}

  // False at the end; `line` is then left alone.
  bool Next(std::string_view& line) {
    if (next_ >= text_.size()) return false;
    start_ = next_;
    const std::size_t end = text_.find('\r', start_);
    line = text_.substr(start_, end - start_);
    if (end == std::string_view::npos) {
      next_ = text_.size();
      return true;
    }
    next_ = end + 1;
    if (next_ < text_.size() && text_[next_] == '\n') ++next_;
    return true;
  }
  // Where in the text the line that Next gave last begins.
  [[nodiscard]] std::size_t start() const { return start_; }

 private:
  std::string_view text_;
  std::size_t start_ = 0;
  std::size_t next_ = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CATALOGUE_TEXT_LINES_H_
