#ifndef CUSTOMSCONV_CONFIG_INI_LINES_H_
#define CUSTOMSCONV_CONFIG_INI_LINES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/lifetime.h"

namespace customsconv {

// The lines of an ini file in their order. A line keeps its number whatever is inserted or
// removed around it; a removed line's number is given out again.
//
// A line that was never changed stays where it was read. A change takes constant time, but
// for one in hundreds, which takes time linear in the file's size.
class IniLines {
 public:
  using Number = std::int32_t;
  // Stands behind the last line and in front of the first one.
  static constexpr Number kEnd = 0;

  // The lines of `text`, which end at CR LF, a lone CR or a lone LF. No empty line
  // follows the last line end.
  void Assign(std::string text);

  [[nodiscard]] std::size_t Count() const { return lines_.size() - 1 - removed_count_; }
  // Bytes of all lines, more or less.
  [[nodiscard]] std::size_t Size() const { return read_.size() + added_.size(); }
  [[nodiscard]] Number Next(Number number) const { return At(number).next; }
  [[nodiscard]] Number Previous(Number number) const { return At(number).previous; }
  // Good until the next change. Empty for kEnd.
  [[nodiscard]] std::string_view Text(Number number) const CUSTOMSCONV_LIFETIME_BOUND {
    return Bytes(At(number).offset, At(number).size);
  }

  void Set(Number number, std::string_view line);
  // In front of the line `next`; the new line's number.
  Number Insert(Number next, std::string_view line);
  void Remove(Number number);

  // Each line followed by CR LF: the whole file, in few pieces. Good until the next change.
  [[nodiscard]] std::vector<std::string_view> Content() const CUSTOMSCONV_LIFETIME_BOUND;

 private:
  struct Line {
    std::size_t offset = 0;
    std::size_t size = 0;  // without CR LF
    Number previous = kEnd;
    Number next = kEnd;
  };
  // Whole lines that stand one behind the other, each with CR LF.
  struct Stretch {
    std::size_t begin;
    std::size_t end;
  };

  [[nodiscard]] const Line& At(Number number) const {
    return lines_[static_cast<std::size_t>(number)];
  }
  [[nodiscard]] Line& At(Number number) { return lines_[static_cast<std::size_t>(number)]; }
  // Offsets count through the text that was read and on through what was added since.
  [[nodiscard]] std::string_view Bytes(std::size_t offset, std::size_t size) const {
    return offset < read_.size() ? std::string_view(read_).substr(offset, size)
                                 : std::string_view(added_).substr(offset - read_.size(), size);
  }
  // A number for a new line, which is linked in front of `next`.
  Number Link(Number next);
  // Index of the stretch that begins at `offset`, where a line begins; the one that went on
  // there ends there now.
  std::size_t Cut(std::size_t offset);
  // Takes the line's bytes out of the stretches; index of what stands behind them.
  std::size_t TakeOut(const Line& line);
  // Adds the bytes of the line in front of stretch `index`.
  void PutIn(std::size_t index, Line& line, std::string_view text);
  void GatherWhenScattered();
  // Copies all lines into one stretch.
  void Gather();

  std::string read_;
  std::string added_;
  std::vector<Line> lines_ = std::vector<Line>(1);  // by number; kEnd closes them to a ring
  std::vector<Stretch> stretches_;                  // in the order of the lines
  Number removed_ = kEnd;  // the first of the removed ones, which are linked by `next`
  std::size_t removed_count_ = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_CONFIG_INI_LINES_H_
