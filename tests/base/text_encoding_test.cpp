#include "base/text_encoding.h"

#include <gtest/gtest.h>

#include <random>

namespace tarnwick {
namespace {

using namespace std::string_literals;

TEST(TextEncoding, StoresEightBitWhereItCan) {
  const struct {
    std::string utf8;
    std::string stored;
  } rows[] = {
      {"plain", "plain"},
      {"\u00B5m \u20AC \u0178", "\xB5m \x80 \x9F"},
      {"\u0081\u009D", "\x81\x9D"},
      {"\u03BBmax", "\xEF\xBB\xBF\u03BBmax"},
      {"\u0080", "\xEF\xBB\xBF\u0080"},  // the byte 80 means the euro sign
      {"\u00EF\u00BB\u00BFa",
       "\xEF\xBB\xBF\u00EF\u00BB\u00BF"
       "a"},
      {"a\xFF",
       "\xEF\xBB\xBF"
       "a\uFFFD"},
  };
  for (const auto& row : rows) EXPECT_EQ(EightBitFromUtf8(row.utf8), row.stored);
  EXPECT_EQ(Utf8FromEightBit("\xEF\xBB\xBF\xE9"), "\u00EF\u00BB\u00BF\u00E9");
}

TEST(TextEncoding, EveryStoredTextReturns) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(EightBitFromUtf8(Utf8FromEightBit(all)), all);
  std::mt19937 random(3);
  for (int i = 0; i < 20'000; ++i) {
    std::string bytes;
    for (auto size = random() % 12; size > 0; --size) bytes += static_cast<char>(random());
    const std::string utf8 = Utf8FromEightBit(bytes);
    ASSERT_TRUE(IsValidUtf8(utf8));
    ASSERT_EQ(Utf8FromEightBit(EightBitFromUtf8(utf8)), utf8);
  }
}

TEST(TextEncoding, KnowsValidUtf8) {
  for (const char* good :
       {"", "a\u00E9\u20AC\U0001F600", "\xF4\x8F\xBF\xBF", "\xED\x9F\xBF", "\xEE\x80\x80"}) {
    EXPECT_TRUE(IsValidUtf8(good)) << good;
  }
  for (const char* bad :
       {"\x80", "\xC0\xAF", "\xC3", "\xE0\x80\xAF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xE2\x82",
        "\xF4\x90\x80\x80", "\xF0\x80\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF"}) {
    EXPECT_FALSE(IsValidUtf8(bad)) << bad;
  }
}

TEST(TextEncoding, ReadsUtf16) {
  const struct {
    std::string bytes;
    ByteOrder order;
    const char* utf8;
  } rows[] = {
      {"\xFF\xFE"
       "1\0\xB5\0"s,
       ByteOrder::LittleEndian, "1\u00B5"},
      {"\xFE\xFF\0"
       "1\x20\xAC"s,
       ByteOrder::BigEndian, "1\u20AC"},
      {"\x3D\xD8\x00\xDE"s, ByteOrder::LittleEndian, "\U0001F600"},
      {"\x3D\xD8"
       "1\0"s,
       ByteOrder::LittleEndian,
       "\uFFFD"
       "1"},
      {"\x00\xDE"
       "1"s,
       ByteOrder::LittleEndian, "\uFFFD\uFFFD"},
      {"", ByteOrder::BigEndian, ""},
  };
  for (const auto& row : rows) EXPECT_EQ(Utf8FromUtf16(row.bytes, row.order), row.utf8);
}

}  // namespace
}  // namespace tarnwick
