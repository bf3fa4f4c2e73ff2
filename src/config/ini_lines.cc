#include "config/ini_lines.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace customsconv {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
// Beyond this many the lines are gathered: finding a stretch stays quick.
constexpr std::size_t kMostStretches = 512;

// Size of the line end at `offset`, 0 at the end of the text.
std::size_t LineEndSize(std::string_view text, std::size_t offset) {
  if (text.substr(offset, kLineEnd.size()) == kLineEnd) return kLineEnd.size();
  return offset < text.size() ? 1 : 0;
}

}  // namespace

void IniLines::Assign(std::string text) {
  constexpr auto kEndsLine = [](char c) { return c == '\r' || c == '\n'; };
  read_ = std::move(text);
  added_.clear();
  lines_.assign(1, {});
  lines_.reserve(static_cast<std::size_t>(std::count(read_.begin(), read_.end(), '\n')) + 2);
  removed_ = kEnd;
  removed_count_ = 0;
  bool as_written = true;
  for (std::size_t offset = 0; offset < read_.size();) {
    const auto start = read_.begin() + static_cast<std::ptrdiff_t>(offset);
    const auto size = static_cast<std::size_t>(std::find_if(start, read_.end(), kEndsLine) - start);
    Line& line = At(Link(kEnd));
    line.offset = offset;
    line.size = size;
    const std::size_t line_end = LineEndSize(read_, offset + size);
    as_written = as_written && line_end == kLineEnd.size();
    offset += size + line_end;
  }
  if (as_written) {
    stretches_.assign(read_.empty() ? 0 : 1, {0, read_.size()});
  } else {
    Gather();
  }
}

void IniLines::Set(Number number, std::string_view line) {
  PutIn(TakeOut(At(number)), At(number), line);
}

IniLines::Number IniLines::Insert(Number next, std::string_view line) {
  const std::size_t index = next == kEnd ? stretches_.size() : Cut(At(next).offset);
  const Number number = Link(next);
  PutIn(index, At(number), line);
  return number;
}

void IniLines::Remove(Number number) {
  Line& line = At(number);
  TakeOut(line);
  At(line.previous).next = line.next;
  At(line.next).previous = line.previous;
  line.next = removed_;
  removed_ = number;
  ++removed_count_;
  GatherWhenScattered();
}

std::vector<std::string_view> IniLines::Content() const {
  std::vector<std::string_view> content;
  content.reserve(stretches_.size());
  for (const Stretch& stretch : stretches_) {
    content.push_back(Bytes(stretch.begin, stretch.end - stretch.begin));
  }
  return content;
}

IniLines::Number IniLines::Link(Number next) {
  Number number = removed_;
  if (number == kEnd) {
    if (lines_.size() > std::numeric_limits<Number>::max()) throw std::length_error("ini lines");
    number = static_cast<Number>(lines_.size());
    lines_.emplace_back();
  } else {
    removed_ = At(number).next;
    --removed_count_;
  }
  const Number previous = At(next).previous;
  At(number).previous = previous;
  At(number).next = next;
  At(previous).next = At(next).previous = number;
  return number;
}

std::size_t IniLines::Cut(std::size_t offset) {
  const auto holds = [offset](const Stretch& stretch) {
    return stretch.begin <= offset && offset < stretch.end;
  };
  auto stretch = std::find_if(stretches_.begin(), stretches_.end(), holds);
  if (stretch->begin != offset) {
    const Stretch rest = {offset, std::exchange(stretch->end, offset)};
    stretch = stretches_.insert(stretch + 1, rest);
  }
  return static_cast<std::size_t>(stretch - stretches_.begin());
}

std::size_t IniLines::TakeOut(const Line& line) {
  const std::size_t index = Cut(line.offset);
  Stretch& stretch = stretches_[index];
  stretch.begin += line.size + kLineEnd.size();
  if (stretch.begin == stretch.end) {
    stretches_.erase(stretches_.begin() + static_cast<std::ptrdiff_t>(index));
  }
  return index;
}

void IniLines::PutIn(std::size_t index, Line& line, std::string_view text) {
  const std::size_t begin = read_.size() + added_.size();
  const std::size_t end = begin + text.size() + kLineEnd.size();
  line.offset = begin;
  line.size = text.size();
  const bool goes_on = index > 0 && stretches_[index - 1].end == begin && !added_.empty();
  added_.append(text).append(kLineEnd);
  if (goes_on) {
    stretches_[index - 1].end = end;
  } else {
    stretches_.insert(stretches_.begin() + static_cast<std::ptrdiff_t>(index), {begin, end});
  }
  GatherWhenScattered();
}

void IniLines::GatherWhenScattered() {
  const bool wasteful = added_.size() > read_.size() + kMostStretches * kLineEnd.size();
  if (stretches_.size() > kMostStretches || wasteful) Gather();
}

void IniLines::Gather() {
  std::string gathered;
  gathered.reserve(read_.size() + added_.size());
  for (Number number = Next(kEnd); number != kEnd; number = Next(number)) {
    const std::string_view text = Text(number);
    At(number).offset = gathered.size();
    gathered.append(text).append(kLineEnd);
  }
  read_ = std::move(gathered);
  added_.clear();
  stretches_.assign(read_.empty() ? 0 : 1, {0, read_.size()});
}

}  // namespace customsconv
