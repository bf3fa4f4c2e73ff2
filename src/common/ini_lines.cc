#include "common/ini_lines.h"

#include <algorithm>
#include <utility>

namespace customsconv {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

// Size of the line end at `offset`, 0 at the end of the text.
std::size_t LineEndSize(std::string_view text, std::size_t offset) {
  if (text.substr(offset, kLineEnd.size()) == kLineEnd) return kLineEnd.size();
  return offset < text.size() ? 1 : 0;
}

}  // namespace

void IniLines::Assign(std::string text) {
  constexpr auto kEndsLine = [](char c) { return c == '\r' || c == '\n'; };
  text_ = std::move(text);
  lines_.assign(1, {});
  removed_ = kEnd;
  removed_count_ = 0;
  for (std::size_t offset = 0; offset < text_.size();) {
    const auto start = text_.begin() + static_cast<std::ptrdiff_t>(offset);
    const auto size = static_cast<std::size_t>(std::find_if(start, text_.end(), kEndsLine) - start);
    Line& line = lines_[Link(kEnd)];
    line.offset = offset;
    line.size = size;
    offset += size + LineEndSize(text_, offset + size);
  }
}

void IniLines::Set(Number number, std::string_view line) {
  lines_[number].offset = text_.size();
  lines_[number].size = line.size();
  text_.append(line).append(kLineEnd);
}

IniLines::Number IniLines::Insert(Number next, std::string_view line) {
  const Number number = Link(next);
  Set(number, line);
  return number;
}

IniLines::Number IniLines::Link(Number next) {
  Number number = removed_;
  if (number == kEnd) {
    number = lines_.size();
    lines_.emplace_back();
  } else {
    removed_ = lines_[number].next;
    --removed_count_;
  }
  const Number previous = lines_[next].previous;
  lines_[number].previous = previous;
  lines_[number].next = next;
  lines_[previous].next = lines_[next].previous = number;
  return number;
}

void IniLines::Remove(Number number) {
  Line& line = lines_[number];
  lines_[line.previous].next = line.next;
  lines_[line.next].previous = line.previous;
  line.next = removed_;
  removed_ = number;
  ++removed_count_;
}

const std::string& IniLines::Joined() {
  joined_.clear();
  joined_.reserve(text_.size() + lines_.size());
  // What follows each other in the text, line ends included.
  std::size_t begin = 0;
  std::size_t end = 0;
  for (Number number = Next(kEnd); number != kEnd; number = Next(number)) {
    const Line& line = lines_[number];
    if (line.offset != end) {
      joined_.append(text_, begin, end - begin);
      begin = line.offset;
    }
    end = line.offset + line.size;
    if (LineEndSize(text_, end) == kLineEnd.size()) {
      end += kLineEnd.size();
    } else {
      joined_.append(text_, begin, end - begin).append(kLineEnd);
      begin = end;
    }
  }
  joined_.append(text_, begin, end - begin);
  if (text_.size() > 2 * joined_.size()) DropOldLines();
  return joined_;
}

void IniLines::DropOldLines() {
  std::size_t offset = 0;
  for (Number number = Next(kEnd); number != kEnd; number = Next(number)) {
    lines_[number].offset = offset;
    offset += lines_[number].size + kLineEnd.size();
  }
  text_ = joined_;
}

}  // namespace customsconv
