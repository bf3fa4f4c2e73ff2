#include "base/internal/utf8_blocks.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace customsconv::internal {
namespace {

// Without byte shuffles: ASCII only, eight bytes at a time.
Utf8Progress ConvertAsciiWords(Utf8Progress at, const char* end) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
  for (std::uint64_t word = 0; end - at.from >= static_cast<std::ptrdiff_t>(sizeof word);) {
    std::memcpy(&word, at.from, sizeof word);
    if ((word & kHighBits) != 0) break;
    std::memcpy(at.to, &word, sizeof word);
    at.from += sizeof word;
    at.to += sizeof word;
  }
  return at;
}

#if defined(__x86_64__)

// For each set of dropped bytes among eight, the places of those that stay.
using KeptPlaces = std::array<std::array<unsigned char, 8>, 256>;

constexpr KeptPlaces kKeptPlaces = [] {
  KeptPlaces places{};
  for (unsigned dropped = 0; dropped < 256; ++dropped) {
    std::size_t count = 0;
    for (unsigned char i = 0; i < 8; ++i) {
      if ((dropped >> i & 1) == 0) places[dropped][count++] = i;
    }
  }
  return places;
}();

constexpr std::array<unsigned char, 256> kKeptCounts = [] {
  std::array<unsigned char, 256> counts{};
  for (unsigned dropped = 0; dropped < 256; ++dropped) {
    counts[dropped] = static_cast<unsigned char>(8 - std::popcount(dropped));
  }
  return counts;
}();

__m128i All(unsigned byte) { return _mm_set1_epi8(static_cast<char>(byte)); }

__m128i IsLead(__m128i bytes) { return _mm_cmpeq_epi8(_mm_and_si128(bytes, All(0xFE)), All(0xD0)); }

struct Converted {
  __m128i bytes;   // of the characters; what stands at a lead byte's place goes
  unsigned leads;  // the places of lead bytes
  bool plain;      // nothing but ASCII and Russian letters; else all is void
};

// Every byte of a block yields the byte of its character, except that the lead
// byte of a letter (0xD0 or 0xD1) yields nothing: it is looked at together with
// the byte behind it. `previous` holds the byte before each byte.
//
// The letter's number from U+0400 is the lead's last bit and the six bits of its second byte. The
// letters А to я are 0x10 to 0x4F there and 0xC0 to 0xFF in the code page, Ё is 0x01 and ё 0x51.
Converted ConvertBlock(__m128i block, __m128i previous) {
  const __m128i is_lead = IsLead(block);
  const __m128i is_second = _mm_cmpeq_epi8(_mm_and_si128(block, All(0xC0)), All(0x80));
  const __m128i row = _mm_and_si128(_mm_cmpeq_epi8(previous, All(0xD1)), All(0x40));
  const __m128i number = _mm_or_si128(_mm_and_si128(block, All(0x3F)), row);
  const __m128i is_yo =
      _mm_or_si128(_mm_cmpeq_epi8(number, All(0x01)), _mm_cmpeq_epi8(number, All(0x51)));
  const __m128i place = _mm_sub_epi8(number, All(0x10));  // А is 0, я is 0x3F
  const __m128i is_letter =
      _mm_or_si128(is_yo, _mm_cmpeq_epi8(_mm_min_epu8(place, All(0x3F)), place));

  // Strange is a long byte that is neither a lead nor the second byte of a
  // letter, and a second byte that does not stand behind a lead or is missing.
  const __m128i known = _mm_or_si128(is_lead, _mm_and_si128(is_second, is_letter));
  const __m128i strange =
      _mm_or_si128(_mm_andnot_si128(known, block), _mm_xor_si128(is_second, IsLead(previous)));

  // Ё stands 0xA7 above its number, ё 0x67, the others 0xB0.
  const __m128i distance = _mm_or_si128(_mm_and_si128(is_yo, _mm_sub_epi8(All(0xA7), row)),
                                        _mm_andnot_si128(is_yo, All(0xB0)));
  const __m128i letters = _mm_add_epi8(number, distance);
  return {_mm_or_si128(_mm_and_si128(is_second, letters), _mm_andnot_si128(is_second, block)),
          static_cast<unsigned>(_mm_movemask_epi8(is_lead)), _mm_movemask_epi8(strange) == 0};
}

// Writes the lower eight bytes without the dropped ones; the end of what stays.
[[gnu::target("ssse3")]] char* StoreKept(__m128i bytes, unsigned dropped, char* to) {
  const __m128i places =
      _mm_loadl_epi64(reinterpret_cast<const __m128i*>(kKeptPlaces[dropped].data()));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_shuffle_epi8(bytes, places));
  return to + kKeptCounts[dropped];
}

[[gnu::target("ssse3")]] Utf8Progress ConvertShuffled(Utf8Progress at, const char* end) {
  constexpr std::ptrdiff_t kBlock = 16;
  __m128i before = _mm_setzero_si128();  // the last block
  bool open = false;                     // it ended with a lead byte
  for (; end - at.from >= kBlock; at.from += kBlock) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at.from));
    if (_mm_movemask_epi8(block) == 0 && !open) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(at.to), block);
      at.to += kBlock;
    } else {
      const Converted result = ConvertBlock(block, _mm_alignr_epi8(block, before, 15));
      if (!result.plain) break;
      at.to = StoreKept(result.bytes, result.leads & 0xFF, at.to);
      at.to = StoreKept(_mm_srli_si128(result.bytes, 8), result.leads >> 8, at.to);
      open = result.leads >> 15 != 0;
    }
    before = block;
  }
  if (open) --at.from;  // back to the start of its character
  return at;
}

#endif

}  // namespace

Utf8Progress ConvertPlainBlocks(Utf8Progress start, const char* end) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("ssse3")) return ConvertShuffled(start, end);
#endif
  return ConvertAsciiWords(start, end);
}

}  // namespace customsconv::internal
