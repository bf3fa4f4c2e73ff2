#ifndef CUSTOMSCONV_STREAMS_READ_STREAM_H_
#define CUSTOMSCONV_STREAMS_READ_STREAM_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/lifetime.h"
#include "base/short_text.h"
#include "platform/files.h"

namespace customsconv {

// A file read through a 32 KB buffer, byte-wise or line by line. A line ends at
// CR; one LF directly behind it belongs to the line end, any other LF to the
// line. Errors throw FileError naming the file.
class TReadStream {
 public:
  static constexpr std::size_t kBufferSize = 32768;

  // Unless `mode` is kModeCreate the buffer is filled from the start of the file.
  TReadStream(const Files& files, std::string_view file_name, FileMode mode);
  virtual ~TReadStream() = default;
  TReadStream(const TReadStream&) = delete;
  TReadStream& operator=(const TReadStream&) = delete;

  // Delivers up to `count` bytes; fewer only at the end of the file.
  std::size_t Read(void* to, std::size_t count);
  // The new position from the file's start. From the current position the offset
  // counts from the next byte to be delivered.
  std::int64_t Seek(std::int64_t offset, SeekOrigin origin);
  // Position in the file of the next byte to be delivered.
  [[nodiscard]] std::int64_t Position() const;

  // One line, at most `limit` (and 255) bytes of it; the rest of the line is skipped.
  void ReadLnShort(ShortText& line, std::size_t limit = ShortText::kMaxSize);
  void ReadLnLong(std::string& line);
  // As ReadLnShort. (Conditional sections, lines ";$...", are switched off here.)
  void ReadLnSection(ShortText& line);
  // Nothing is left to deliver. (A full buffer is refilled as soon as its last
  // byte was delivered, so a file of whole buffers ends like any other.)
  [[nodiscard]] bool AtEnd() const;

  // Move to the end of the file and write the text and CR LF.
  void WriteLnShort(std::string_view line);
  void WriteLnLong(std::string_view line);

  // One length-prefixed string. A length that reaches beyond the file's end throws
  // FileError before anything is allocated for it.
  void ReadShortText(ShortText& text);
  void ReadLongText(std::string& text);

  [[nodiscard]] const ShortText& file_name() const CUSTOMSCONV_LIFETIME_BOUND { return file_name_; }

 protected:
  ShortText file_name_;

 private:
  // Fills the buffer from where the file stands.
  void Refill();
  void RefillWhenUsedUp();
  std::size_t TakeBuffered(char* to, std::size_t count);
  // Hands the bytes of one line to `take`, piece by piece.
  template <typename Take>
  void ReadLine(Take take);
  void WriteAtEnd(std::string_view line);
  // The `count` bytes of a number in front of a string.
  [[nodiscard]] std::uint32_t ReadLength(std::size_t count);
  // Throws when the file ends before `count` more bytes.
  void RequireRemaining(std::uint64_t count) const;

  std::unique_ptr<FileStream> stream_;  // stands behind the buffered stretch
  std::unique_ptr<std::array<char, kBufferSize>> buffer_;
  std::size_t position_ = 0;  // next byte to deliver
  std::size_t filled_ = 0;    // bytes that the last fill delivered
  std::int64_t buffer_start_ = 0;
};

}  // namespace customsconv

#endif  // CUSTOMSCONV_STREAMS_READ_STREAM_H_
