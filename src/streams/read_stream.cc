// The buffer holds the stretch of the file that begins at buffer_start_; the stream behind it
// stands at that stretch's end. A full buffer is refilled as soon as it is used up, so one that is
// not full means the end of the file.

#include "streams/read_stream.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "base/cp1251_literal.h"
#include "streams/string_framing.h"

namespace customsconv {

TReadStream::TReadStream(const Files& files, std::string_view file_name, FileMode mode)
    : file_name_(ShortText::Cut(file_name)),
      stream_(files.Open(file_name_, mode)),
      buffer_(std::make_unique<std::array<char, kBufferSize>>()) {
  if (mode != kModeCreate) Refill();
}

void TReadStream::Refill() {
  buffer_start_ += static_cast<std::int64_t>(filled_);
  position_ = 0;
  filled_ = 0;
  filled_ = stream_->Read(buffer_->data(), kBufferSize);
}

void TReadStream::RefillWhenUsedUp() {
  if (position_ == kBufferSize) Refill();
}

bool TReadStream::AtEnd() const { return filled_ < kBufferSize && position_ == filled_; }

std::size_t TReadStream::TakeBuffered(char* to, std::size_t count) {
  const std::size_t taken = std::min(count, filled_ - position_);
  std::memcpy(to, buffer_->data() + position_, taken);
  position_ += taken;
  return taken;
}

std::size_t TReadStream::Read(void* to, std::size_t count) {
  auto* out = static_cast<char*>(to);
  std::size_t delivered = TakeBuffered(out, count);
  if (delivered < count && filled_ == kBufferSize) {
    const std::size_t missing = count - delivered;
    std::size_t direct = 0;
    if (missing > kBufferSize) direct = stream_->Read(out + delivered, missing);
    buffer_start_ += static_cast<std::int64_t>(direct);
    delivered += direct;
    Refill();
    if (direct == 0) delivered += TakeBuffered(out + delivered, missing);
  }
  RefillWhenUsedUp();
  return delivered;
}

std::int64_t TReadStream::Position() const {
  return buffer_start_ + static_cast<std::int64_t>(position_);
}

std::int64_t TReadStream::Seek(std::int64_t offset, SeekOrigin origin) {
  if (origin == SeekOrigin::kCurrent) {
    if (offset == 0) return Position();
    constexpr std::int64_t kFarthest = std::numeric_limits<std::int64_t>::max();
    offset = offset > kFarthest - Position() ? kFarthest : Position() + offset;
    origin = SeekOrigin::kBegin;
  } else if (origin == SeekOrigin::kBegin && offset >= buffer_start_ &&
             offset < buffer_start_ + static_cast<std::int64_t>(filled_)) {
    position_ = static_cast<std::size_t>(offset - buffer_start_);
    return offset;
  }
  const std::int64_t place = stream_->Seek(offset, origin);
  position_ = filled_ = 0;
  buffer_start_ = place;
  Refill();
  return place;
}

template <typename Take>
void TReadStream::ReadLine(Take take) {
  bool ended = false;
  while (!ended && !AtEnd()) {
    const char* from = buffer_->data() + position_;
    const std::size_t rest = filled_ - position_;
    const auto* cr = static_cast<const char*>(std::memchr(from, '\r', rest));
    ended = cr != nullptr;
    const std::size_t piece = ended ? static_cast<std::size_t>(cr - from) : rest;
    take(std::string_view(from, piece));
    position_ += piece + (ended ? 1 : 0);
    RefillWhenUsedUp();
  }
  if (ended && position_ < filled_ && (*buffer_)[position_] == '\n') {
    ++position_;
    RefillWhenUsedUp();
  }
}

void TReadStream::ReadLnShort(ShortText& line, std::size_t limit) {
  line.clear();
  ReadLine([&](std::string_view piece) {
    line += piece.substr(0, limit - std::min(limit, line.size()));
  });
}

void TReadStream::ReadLnLong(std::string& line) {
  line.clear();
  ReadLine([&](std::string_view piece) { line.append(piece); });
}

void TReadStream::ReadLnSection(ShortText& line) { ReadLnShort(line); }

void TReadStream::WriteAtEnd(std::string_view line) {
  buffer_start_ = stream_->Seek(0, SeekOrigin::kEnd);
  position_ = filled_ = 0;
  const std::string text = std::string(line) + "\r\n";
  stream_->Write(text.data(), text.size());
  buffer_start_ += static_cast<std::int64_t>(text.size());
}

void TReadStream::WriteLnShort(std::string_view line) { WriteAtEnd(CutToShort(line)); }

void TReadStream::WriteLnLong(std::string_view line) { WriteAtEnd(line); }

void TReadStream::RequireRemaining(std::uint64_t count) const {
  const std::int64_t remaining = std::max<std::int64_t>(stream_->Size() - Position(), 0);
  if (count <= static_cast<std::uint64_t>(remaining)) return;
  throw FileError(FileError::Kind::kRead, file_name_, "файл кончается внутри строки"_cp1251);
}

std::uint32_t TReadStream::ReadLength(std::size_t count) {
  RequireRemaining(count);
  std::array<unsigned char, framing::kLongestPrefix> bytes{};
  Read(bytes.data(), count);
  return framing::DecodeLength(bytes.data(), count);
}

void TReadStream::ReadShortText(ShortText& text) {
  const std::uint32_t size = ReadLength(framing::kShortLength);
  RequireRemaining(size);
  std::array<char, ShortText::kMaxSize> bytes;
  text = ShortText::Cut({bytes.data(), Read(bytes.data(), size)});  // one byte held the length
}

void TReadStream::ReadLongText(std::string& text) {
  std::uint32_t size = ReadLength(framing::kLongLength);
  if (size == framing::kLengthFollows) size = ReadLength(framing::kFollowingLength);
  RequireRemaining(size);
  text.resize(size);
  text.resize(Read(text.data(), size));
}

}  // namespace customsconv
