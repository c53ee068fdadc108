// Text between the encodings that files use and UTF-8, which the program uses inside. Knows no files.
#pragma once

#include <string>
#include <string_view>

namespace tarnwick {

enum class ByteOrder { LittleEndian, BigEndian };

/// True when every byte belongs to a well-formed UTF-8 sequence (no surrogates, no overlong forms, up to U+10FFFF).
bool IsValidUtf8(std::string_view bytes);

/// UTF-8 of stored 8-bit text (Windows-1252; its five undefined bytes are the controls of the same number). Text that
/// begins with EF BB BF and is valid UTF-8 is that UTF-8 without the three bytes.
std::string Utf8FromEightBit(std::string_view bytes);

/// Text of unknown encoding, as data files hold it: what is valid UTF-8 as it stands, all else as 8-bit text.
std::string Utf8FromText(std::string_view bytes);

/// The stored 8-bit form, which Utf8FromEightBit undoes: Windows-1252 where it has every character, otherwise (and
/// where those bytes would begin with EF BB BF) EF BB BF and the UTF-8 itself. Malformed bytes become U+FFFD.
std::string EightBitFromUtf8(std::string_view utf8);

/// UTF-8 of UTF-16 bytes; a leading byte order mark is dropped, lone surrogates and an odd last byte become U+FFFD.
std::string Utf8FromUtf16(std::string_view bytes, ByteOrder order);

/// True when some bytes outside ASCII follow each other as in words of another alphabet stored in eight bits, and the whole is no
/// UTF-8: Utf8FromText makes of them letters that nobody wrote.
bool LooksOfAnotherAlphabet(std::string_view bytes);

/// A to Z become a to z; every other byte stays.
std::string LowerAscii(std::string_view text);

}  // namespace tarnwick
