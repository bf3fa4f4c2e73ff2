#ifndef CUSTOMSCONV_COMMON_INI_LINES_H_
#define CUSTOMSCONV_COMMON_INI_LINES_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace customsconv {

// The lines of an ini file. A line has a place in the file (from 0) and a number that it
// keeps whatever is inserted or removed around it.
//
// The lines are stretches of one text, to which new ones are added: joining them copies what
// did not change in few pieces.
class IniLines {
 public:
  using Number = std::size_t;

  // The lines of `text`, which end at CR LF, a lone CR or a lone LF. No empty line
  // follows the last line end. Numbers are places.
  void Assign(std::string text);

  [[nodiscard]] std::size_t size() const { return order_.size(); }
  [[nodiscard]] bool empty() const { return order_.empty(); }
  // Good until a line is set or inserted.
  [[nodiscard]] std::string_view Line(Number number) const {
    return std::string_view(text_).substr(lines_[number].offset, lines_[number].size);
  }
  [[nodiscard]] std::string_view LineAt(std::size_t place) const { return Line(order_[place]); }

  void Set(Number number, std::string_view line) { lines_[number] = Added(line); }
  // In front of the line that stands at `place`; the new line's number.
  Number Insert(std::size_t place, std::string_view line);
  // The place where the line stood; takes time in proportion to the number of lines.
  std::size_t Remove(Number number);
  void RemovePlaces(std::size_t begin, std::size_t end);
  // Makes every line's number its place.
  void Renumber();

  // Each line followed by CR LF. Good until the next call.
  [[nodiscard]] const std::string& Joined();

 private:
  struct Stretch {
    std::size_t offset;
    std::size_t size;
  };
  [[nodiscard]] Stretch Added(std::string_view line);
  // Keeps in the text only what was joined last.
  void DropOldLines();

  std::string text_;
  std::vector<Stretch> lines_;  // by number
  std::vector<Number> order_;   // by place
  std::string joined_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_COMMON_INI_LINES_H_
