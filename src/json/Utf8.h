#pragma once
// UTF-8 checks shared by the reader and the writer: the length of one well-formed sequence, and
// a word-at-a-time test for the bytes a JSON string cannot copy verbatim.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON) && defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace nutrition::json {

// Length of the well-formed UTF-8 sequence at `text[i]` (1 to 4), or 0 when it is malformed:
// truncated, overlong, a surrogate, or beyond U+10FFFF.
inline std::size_t utf8SequenceLength(std::string_view text, std::size_t i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
  const unsigned char lead = byte(i);
  if (lead < 0x80) return 1;
  std::size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;  // bounds of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;   // no overlong forms
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;  // nothing above U+10FFFF
  } else {
    return 0;
  }
  if (length > text.size() - i) return 0;
  if (byte(i + 1) < low || byte(i + 1) > high) return 0;
  for (std::size_t k = i + 2; k < i + length; ++k) {
    if (byte(k) < 0x80 || byte(k) > 0xBF) return 0;
  }
  return length;
}

// The first byte at or after `p` that a JSON string cannot copy as it is: a quote, a
// backslash, a control character or a byte of a multi-byte sequence; `end` when there is none.
// Sixteen bytes at a time where the target has SSE2 or NEON, eight at a time otherwise.
inline const char* findSpecialByte(const char* p, const char* end) {
#if defined(__SSE2__)
  const __m128i quote = _mm_set1_epi8('"');
  const __m128i backslash = _mm_set1_epi8('\\');
  const __m128i space = _mm_set1_epi8(0x20);
  while (end - p >= 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    // A signed comparison with 0x20 catches control characters and bytes from 0x80 at once.
    const __m128i special =
        _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, quote), _mm_cmpeq_epi8(v, backslash)),
                     _mm_cmplt_epi8(v, space));
    const int mask = _mm_movemask_epi8(special);
    if (mask != 0) return p + __builtin_ctz(static_cast<unsigned>(mask));
    p += 16;
  }
#elif defined(__ARM_NEON) && defined(__aarch64__)
  const uint8x16_t quote = vdupq_n_u8('"');
  const uint8x16_t backslash = vdupq_n_u8('\\');
  const uint8x16_t space = vdupq_n_u8(0x20);
  const uint8x16_t high = vdupq_n_u8(0x80);
  while (end - p >= 16) {
    const uint8x16_t v = vld1q_u8(reinterpret_cast<const std::uint8_t*>(p));
    const uint8x16_t special = vorrq_u8(vorrq_u8(vceqq_u8(v, quote), vceqq_u8(v, backslash)),
                                        vorrq_u8(vcltq_u8(v, space), vcgeq_u8(v, high)));
    if (vmaxvq_u8(special) != 0) break;  // the byte loop below finds which
    p += 16;
  }
#else
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
  constexpr std::uint64_t kHigh = 0x8080808080808080ULL;
  const auto hasZero = [](std::uint64_t v) { return (v - kOnes) & ~v & kHigh; };
  while (end - p >= 8) {
    std::uint64_t word;
    std::memcpy(&word, p, sizeof word);
    const std::uint64_t special = hasZero(word ^ (kOnes * '"')) | hasZero(word ^ (kOnes * '\\')) |
                                  ((word - kOnes * 0x20) & ~word & kHigh) | (word & kHigh);
    if (special != 0) break;  // the byte loop below finds which
    p += 8;
  }
#endif
  for (; p != end; ++p) {
    const auto c = static_cast<unsigned char>(*p);
    if (c == '"' || c == '\\' || c < 0x20 || c >= 0x80) break;
  }
  return p;
}

// Appends the UTF-8 form of a code point (at most U+10FFFF, not a surrogate).
template <class String>
void appendUtf8(String& out, std::uint32_t code) {
  if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xC0 | (code >> 6));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    out += static_cast<char>(0xE0 | (code >> 12));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (code >> 18));
    out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  }
}

}  // namespace nutrition::json
