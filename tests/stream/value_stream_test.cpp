#include <gtest/gtest.h>

#include <cmath>

#include "stream/value_reader.h"
#include "stream/value_writer.h"

namespace tarnwick {
namespace {

using namespace std::string_literals;

template <class Work>
std::string MessageOf(Work work) {
  try {
    work();
  } catch (const StreamError& error) {
    return error.what();
  }
  return "no error";
}

TEST(ValueStream, IntegersTakeTheSmallestKind) {
  const struct {
    std::int32_t value;
    std::string bytes;
  } rows[] = {
      {0, "\2\0"s},
      {-128, "\2\x80"s},
      {127, "\2\x7F"s},
      {128, "\3\x80\0"s},
      {-129, "\3\x7F\xFF"s},
      {32767, "\3\xFF\x7F"s},
      {32768, "\4\0\x80\0\0"s},
      {-2147483647 - 1, "\4\0\0\0\x80"s},
  };
  for (const auto& row : rows) {
    std::string out;
    ValueWriter(out).WriteInteger(row.value);
    EXPECT_EQ(out, row.bytes);
    EXPECT_EQ(ValueReader(out).ReadInteger(), row.value);
  }
}

TEST(ValueStream, LongStringsBeginAt256) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{255}, std::size_t{256}}) {
    std::string out;
    ValueWriter(out).WriteString(std::string(size, 'z'));
    EXPECT_EQ(out.size(), size + (size > 255 ? 5 : 2));
    EXPECT_EQ(out[0], size > 255 ? 12 : 6);
    EXPECT_EQ(ValueReader(out).ReadString(), std::string(size, 'z'));
  }
  EXPECT_EQ(ValueReader("\x0C\2\0\0\0hi"s).ReadString(), "hi");
}

TEST(ValueStream, RefusesShortAndStrangeBytes) {
  const auto integer = [](ValueReader& reader) { reader.ReadInteger(); };
  const auto real = [](ValueReader& reader) { reader.ReadFloat(); };
  const auto boolean = [](ValueReader& reader) { reader.ReadBoolean(); };
  const auto string = [](ValueReader& reader) { reader.ReadString(); };
  const auto raw = [](ValueReader& reader) { reader.ReadRawInteger(); };
  const struct {
    std::string bytes;
    void (*read)(ValueReader&);
    const char* text;
  } rows[] = {
      {"", integer, kUnexpectedEnd},
      {"\4\1\1\1"s, integer, kUnexpectedEnd},
      {"\5\1\1\1"s, integer, kUnexpectedValue},
      {"\5\0\0\0\0\0\0\0\0\0"s, real, kUnexpectedEnd},
      {"\2\1"s, real, kUnexpectedValue},
      {"\7"s, boolean, kUnexpectedValue},
      {"\6"s, string, kUnexpectedEnd},
      {"\6\3ab"s, string, kUnexpectedEnd},
      {"\x0C\xFF\xFF\xFF\xFFxyz"s, string, kUnexpectedEnd},
      {"\x0C\1\0"s, string, kUnexpectedEnd},
      {"\2\1"s, string, kUnexpectedValue},
      {"\1\2\3"s, raw, kUnexpectedEnd},
  };
  for (const auto& row : rows) {
    ValueReader reader(row.bytes);
    EXPECT_EQ(MessageOf([&] { row.read(reader); }), row.text);
    EXPECT_EQ(reader.Position(), 0U);
  }
}

}  // namespace
}  // namespace tarnwick
