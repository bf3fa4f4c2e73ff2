#include "common/ini_lines.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace customsconv {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

// Size of the line end at `offset`, 0 at the end of the text.
std::size_t LineEndSize(std::string_view text, std::size_t offset) {
  if (text.substr(offset, kLineEnd.size()) == kLineEnd) return kLineEnd.size();
  return offset < text.size() ? 1 : 0;
}

auto Offset(std::size_t place) { return static_cast<std::ptrdiff_t>(place); }

}  // namespace

void IniLines::Assign(std::string text) {
  constexpr auto kEndsLine = [](char c) { return c == '\r' || c == '\n'; };
  text_ = std::move(text);
  lines_.clear();
  for (std::size_t offset = 0; offset < text_.size();) {
    const auto end = std::find_if(text_.begin() + Offset(offset), text_.end(), kEndsLine);
    const auto size = static_cast<std::size_t>(end - text_.begin()) - offset;
    lines_.push_back({offset, size});
    offset += size + LineEndSize(text_, offset + size);
  }
  order_.resize(lines_.size());
  std::iota(order_.begin(), order_.end(), Number{0});
}

IniLines::Number IniLines::Insert(std::size_t place, std::string_view line) {
  const Number number = lines_.size();
  lines_.push_back(Added(line));
  order_.insert(order_.begin() + Offset(place), number);
  return number;
}

std::size_t IniLines::Remove(Number number) {
  const auto found = std::find(order_.begin(), order_.end(), number);
  const auto place = static_cast<std::size_t>(found - order_.begin());
  order_.erase(found);
  return place;
}

void IniLines::RemovePlaces(std::size_t begin, std::size_t end) {
  order_.erase(order_.begin() + Offset(begin), order_.begin() + Offset(end));
}

void IniLines::Renumber() {
  std::vector<Stretch> by_place;
  by_place.reserve(order_.size());
  for (Number& number : order_) {
    by_place.push_back(lines_[number]);
    number = by_place.size() - 1;
  }
  lines_ = std::move(by_place);
}

const std::string& IniLines::Joined() {
  joined_.clear();
  joined_.reserve(text_.size() + order_.size());
  // What follows each other in the text, line ends included.
  std::size_t begin = 0;
  std::size_t end = 0;
  for (const Number number : order_) {
    const Stretch line = lines_[number];
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
  for (const Number number : order_) {
    lines_[number].offset = offset;
    offset += lines_[number].size + kLineEnd.size();
  }
  text_ = joined_;
}

IniLines::Stretch IniLines::Added(std::string_view line) {
  const std::size_t offset = text_.size();
  text_.append(line).append(kLineEnd);
  return {offset, line.size()};
}

}  // namespace customsconv
