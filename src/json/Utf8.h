#pragma once
// UTF-8 checks shared by the reader and the writer: the length of one well-formed sequence, and
// a word-at-a-time test for the bytes a JSON string cannot copy verbatim.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

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

// Whether any of the 8 bytes at `p` is a quote, a backslash, a control character or not ASCII:
// the bytes that end a run a string can copy as it is. Exact for the word as a whole.
inline bool hasSpecialByte(const char* p) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
  constexpr std::uint64_t kHigh = 0x8080808080808080ULL;
  std::uint64_t word;
  std::memcpy(&word, p, sizeof word);
  const auto hasZero = [](std::uint64_t v) { return (v - kOnes) & ~v & kHigh; };
  const std::uint64_t quote = hasZero(word ^ (kOnes * '"'));
  const std::uint64_t backslash = hasZero(word ^ (kOnes * '\\'));
  const std::uint64_t control = (word - kOnes * 0x20) & ~word & kHigh;
  return ((quote | backslash | control) | (word & kHigh)) != 0;
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
