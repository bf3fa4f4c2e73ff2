#ifndef CUSTOMSCONV_BASE_INTERNAL_UTF8_BLOCKS_H_
#define CUSTOMSCONV_BASE_INTERNAL_UTF8_BLOCKS_H_

namespace customsconv::internal {

// Where a conversion has come to; both ends move on together.
struct Utf8Progress {
  const char* from;
  char* to;
};

// Converts as many whole characters as it quickly can, from a character's start:
// blocks of ASCII and Russian letters, Ё among them. It stops before the first
// block that holds anything else, or near `end`; what follows is the caller's.
// `to` needs room for as many bytes as there are from `from` to `end`.
[[nodiscard]] Utf8Progress ConvertPlainBlocks(Utf8Progress start, const char* end);

}  // namespace customsconv::internal

#endif  // CUSTOMSCONV_BASE_INTERNAL_UTF8_BLOCKS_H_
