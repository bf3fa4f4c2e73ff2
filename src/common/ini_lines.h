#ifndef CUSTOMSCONV_COMMON_INI_LINES_H_
#define CUSTOMSCONV_COMMON_INI_LINES_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace customsconv {

// The lines of an ini file in their order. A line keeps its number whatever is inserted or
// removed around it; a removed line's number is given out again.
//
// The lines are stretches of one text, to which new ones are added: joining them copies what
// did not change in few pieces. A change takes constant time.
class IniLines {
 public:
  using Number = std::size_t;
  // Stands behind the last line and in front of the first one.
  static constexpr Number kEnd = 0;

  // The lines of `text`, which end at CR LF, a lone CR or a lone LF. No empty line
  // follows the last line end.
  void Assign(std::string text);

  [[nodiscard]] std::size_t Count() const { return lines_.size() - 1 - removed_count_; }
  [[nodiscard]] Number Next(Number number) const { return lines_[number].next; }
  [[nodiscard]] Number Previous(Number number) const { return lines_[number].previous; }
  // Good until a line is set or inserted. Empty for kEnd.
  [[nodiscard]] std::string_view Text(Number number) const {
    return std::string_view(text_).substr(lines_[number].offset, lines_[number].size);
  }

  void Set(Number number, std::string_view line);
  // In front of the line `next`; the new line's number.
  Number Insert(Number next, std::string_view line);
  void Remove(Number number);

  // Each line followed by CR LF. Good until the next call.
  [[nodiscard]] const std::string& Joined();

 private:
  struct Line {
    std::size_t offset = 0;  // in the text
    std::size_t size = 0;
    Number previous = kEnd;
    Number next = kEnd;
  };
  // A number for a new line, which is linked in front of `next`.
  Number Link(Number next);
  // Keeps in the text only what was joined last.
  void DropOldLines();

  std::string text_;
  std::vector<Line> lines_ = std::vector<Line>(1);  // by number; kEnd closes them to a ring
  Number removed_ = kEnd;  // the first of the removed ones, which are linked by `next`
  std::size_t removed_count_ = 0;
  std::string joined_;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_COMMON_INI_LINES_H_
