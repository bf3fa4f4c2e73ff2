#ifndef CUSTOMSCONV_STREAMS_STRING_FRAMING_H_
#define CUSTOMSCONV_STREAMS_STRING_FRAMING_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace customsconv::framing {

// How strings stand in the document files. Lengths are little-endian.
//
//   short string              n:1  bytes:n
//   long string, n < 65535    n:2  bytes:n
//   long string, from 65535   FF FF  n:4  bytes:n
inline constexpr std::size_t kShortLength = 1;
inline constexpr std::size_t kLongLength = 2;
inline constexpr std::size_t kFollowingLength = 4;
inline constexpr std::uint32_t kLengthFollows = 0xFFFF;
inline constexpr std::size_t kLongestPrefix = 4;  // one number, without its mark

[[nodiscard]] inline std::uint32_t DecodeLength(const unsigned char* bytes, std::size_t count) {
  std::uint32_t length = 0;
  for (std::size_t i = count; i > 0; --i) length = length << 8 | bytes[i - 1];
  return length;
}

inline void AppendLength(std::string& out, std::uint32_t length, std::size_t count) {
  for (; count > 0; --count, length >>= 8) out += static_cast<char>(length & 0xFF);
}

}  // namespace customsconv::framing

#endif  // CUSTOMSCONV_STREAMS_STRING_FRAMING_H_
