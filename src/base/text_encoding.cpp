#include "base/text_encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace tarnwick {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr char32_t kReplacement = 0xFFFD;

// Windows-1252, bytes 80 to 9F; the undefined ones are the control of the same number.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

struct Decoded {
  char32_t character = kReplacement;
  std::size_t size = 1;
  bool valid = false;
};

unsigned ByteAt(std::string_view bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}

// The sequence at the front of non-empty bytes.
Decoded DecodeFirst(std::string_view bytes) {
  const unsigned lead = ByteAt(bytes, 0);
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < size) return {};
  char32_t character = lead & (0xFFU >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) {
    const unsigned next = ByteAt(bytes, i);
    if ((next & 0xC0U) != 0x80) return {};
    character = character << 6 | (next & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < kSmallest[size] || surrogate || character > 0x10FFFF) return {};
  return {character, size, true};
}

void AppendUtf8(std::string& out, char32_t character) {
  const auto append = [&out](char32_t byte) { out += static_cast<char>(byte); };
  if (character < 0x80) {
    append(character);
    return;
  }
  if (character < 0x800) {
    append(0xC0 | character >> 6);
  } else {
    if (character < 0x10000) {
      append(0xE0 | character >> 12);
    } else {
      append(0xF0 | character >> 18);
      append(0x80 | (character >> 12 & 0x3F));
    }
    append(0x80 | (character >> 6 & 0x3F));
  }
  append(0x80 | (character & 0x3F));
}

std::optional<char> EightBitOf(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
  if (found == kUpperControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

bool IsAscii(std::string_view bytes) {
  return std::none_of(bytes.begin(), bytes.end(),
                      [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const Decoded next = DecodeFirst(bytes);
    if (!next.valid) return false;
    bytes.remove_prefix(next.size);
  }
  return true;
}

std::string Utf8FromText(std::string_view bytes) {
  return IsValidUtf8(bytes) ? std::string(bytes) : Utf8FromEightBit(bytes);
}

std::string Utf8FromEightBit(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  if (bytes.starts_with(kUtf8Mark)) {
    const std::string_view rest = bytes.substr(kUtf8Mark.size());
    if (IsValidUtf8(rest)) return std::string(rest);
  }
  std::string utf8;
  utf8.reserve(bytes.size() * 2);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const unsigned byte = ByteAt(bytes, i);
    AppendUtf8(utf8, byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80] : byte);
  }
  return utf8;
}

std::string EightBitFromUtf8(std::string_view utf8) {
  if (IsAscii(utf8)) return std::string(utf8);
  std::string eight_bit;
  std::string marked(kUtf8Mark);
  bool fits = true;
  while (!utf8.empty()) {
    const Decoded next = DecodeFirst(utf8);
    utf8.remove_prefix(next.size);
    AppendUtf8(marked, next.character);
    if (!fits) continue;
    const std::optional<char> byte = EightBitOf(next.character);
    fits = byte.has_value();
    if (fits) eight_bit += *byte;
  }
  return fits && !eight_bit.starts_with(kUtf8Mark) ? eight_bit : marked;
}

std::string Utf8FromUtf16(std::string_view bytes, ByteOrder order) {
  const auto unit_at = [bytes, order](std::size_t index) -> char32_t {
    const unsigned first = ByteAt(bytes, index);
    const unsigned second = ByteAt(bytes, index + 1);
    return order == ByteOrder::LittleEndian ? first | second << 8 : first << 8 | second;
  };
  const auto is_high = [](char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; };
  const auto is_low = [](char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; };
  std::string utf8;
  utf8.reserve(bytes.size());
  std::size_t index = bytes.size() >= 2 && unit_at(0) == 0xFEFF ? 2 : 0;
  for (; index + 1 < bytes.size(); index += 2) {
    char32_t character = unit_at(index);
    if (is_high(character) && index + 3 < bytes.size() && is_low(unit_at(index + 2))) {
      index += 2;
      character = 0x10000 + ((character - 0xD800) << 10) + (unit_at(index) - 0xDC00);
    } else if (is_high(character) || is_low(character)) {
      character = kReplacement;
    }
    AppendUtf8(utf8, character);
  }
  if (index < bytes.size()) AppendUtf8(utf8, kReplacement);
  return utf8;
}

bool LooksOfAnotherAlphabet(std::string_view bytes) {
  constexpr std::ptrdiff_t kFewest = 4;  // letters with accents rarely stand side by side
  const auto is_beyond_ascii = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
  const auto found = std::search_n(bytes.begin(), bytes.end(), kFewest, true,
                                   [&](char c, bool) { return is_beyond_ascii(c); });
  return found != bytes.end() && !IsValidUtf8(bytes);
}

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

}  // namespace tarnwick
