#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "base/undefined.h"
#include "stream/section_reader.h"
#include "stream/section_writer.h"

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

struct Written {
  explicit Written(WriterMode mode = WriterMode::Typed) : writer(bytes, mode) {}
  std::string bytes;
  SectionWriter writer;
};

struct Reading {
  explicit Reading(std::string read) : bytes(std::move(read)), values(bytes), reader(values) {}
  std::string bytes;
  ValueReader values;
  SectionReader reader;
};

const Font kFont{"Helv", 12, Color{0x102030}, true, false, true, false};

TEST(SectionStream, TagsOfBothModes) {
  const auto write_all = [](SectionWriter& writer) {
    writer.WriteString(1, "SeriesName", "a");
    writer.WriteFloat(2, "NumericalTolerance", 0.5);
    writer.WriteInteger(13, "FileHasHeaders", 3);
    writer.WriteBoolean(99, "Yes", true);
    writer.WriteEndOfSection();
    writer.WritePointBlockHeader(1);
    writer.WritePoint(1, kUndefined);
    writer.WriteCount(2);
  };
  Written typed;
  write_all(typed.writer);
  EXPECT_EQ(typed.bytes,
            "\6\3 1S\6\1a\6\3 2D\5\0\0\0\0\0\0\0\x80\xFE\x3F\6\3"
            "13I\2\3\6\3"
            "99B\x09\6\3 0B\x08"
            "\6\3 1I\2\1\6\3 2I\2\2\6\1D\5\0\0\0\0\0\0\0\x80\xFF\x3F"
            "\5\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\6\1I\2\2"s);
  Written text(WriterMode::Text);
  write_all(text.writer);
  EXPECT_EQ(text.bytes,
            "\6\x0DSeriesName 1S\6\1a\6\x15NumericalTolerance 2S\6\3"
            "0.5\6\x11"
            "FileHasHeaders13S"
            "\6\1"
            "3\6\6Yes99S\6\4true\6\x0F"
            "EndOfSection 0S\6\5"
            "false"
            "\6\x11NumberOfPoints 1S\6\1"
            "1\6\x12"
            "EntriesPerPoint 2S\6\1"
            "2\6\1S\6\1"
            "1\6\3NaN"
            "\6\1S\6\1"
            "2"s);
}

TEST(SectionStream, RefusesKeyNumbersOfThreeCharacters) {
  Written out;
  EXPECT_EQ(MessageOf([&] { out.writer.WriteInteger(100, "x", 1); }), "illegal call in savetofile");
  EXPECT_EQ(MessageOf([&] { out.writer.WriteFont(-1, "x", kFont); }), "illegal call in savetofile");
  EXPECT_TRUE(out.bytes.empty());
}

// What each requested type makes of a value; a text is an error's, nothing of a type stands for "cannot".
struct Conversion {
  const char* what;
  void (*write)(SectionWriter&);
  std::optional<std::string> string;
  std::optional<std::int32_t> integer;
  std::optional<double> real;
  std::optional<bool> boolean;
};

TEST(SectionStream, ConvertsByTheLetterFound) {
  using Writer = SectionWriter;
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  const Conversion rows[] = {
      {"text", [](Writer& w) { w.WriteString(1, "", "\u03BB"); }, "\u03BB", {}, {}, false},
      {"true", [](Writer& w) { w.WriteString(1, "", "true"); }, "true", {}, {}, true},
      {"True", [](Writer& w) { w.WriteString(1, "", "True"); }, "True", {}, {}, false},
      {"12", [](Writer& w) { w.WriteString(1, "", " 12"); }, " 12", 12, 12, false},
      {"comma", [](Writer& w) { w.WriteString(1, "", "1,5"); }, "1,5", {}, 1.5, false},
      {"1", [](Writer& w) { w.WriteInteger(1, "", 1); }, "1", 1, 1, true},
      {"-300", [](Writer& w) { w.WriteInteger(1, "", -300); }, "-300", -300, -300, false},
      {"2.5", [](Writer& w) { w.WriteFloat(1, "", 2.5); }, "2.5", 3, 2.5, false},
      {"-2.4", [](Writer& w) { w.WriteFloat(1, "", -2.4); }, "-2.4", -2, -2.4, false},
      {"1e20", [](Writer& w) { w.WriteFloat(1, "", 1e20); }, "1E20", kMax, 1e20, false},
      {"-1e20", [](Writer& w) { w.WriteFloat(1, "", -1e20); }, "-1E20", kMin, -1e20, false},
      {"yes", [](Writer& w) { w.WriteBoolean(1, "", true); }, "true", 1, 1, true},
      {"no", [](Writer& w) { w.WriteBoolean(1, "", false); }, "false", 0, 0, false},
      {"font", [](Writer& w) { w.WriteFont(1, "", kFont); }, {}, {}, {}, {}},
  };
  for (const Conversion& row : rows) {
    Written out;
    row.write(out.writer);
    const auto check = [&](auto read, const auto& expected) {
      Reading in(out.bytes);
      EXPECT_EQ(in.reader.ReadKey(), 1);
      if (expected) {
        EXPECT_EQ((in.reader.*read)(), *expected) << row.what;
      } else {
        EXPECT_EQ(MessageOf([&] { (in.reader.*read)(); }), "conversion error") << row.what;
      }
    };
    check(&SectionReader::ReadAsString, row.string);
    check(&SectionReader::ReadAsInteger, row.integer);
    check(&SectionReader::ReadAsFloat, row.real);
    check(&SectionReader::ReadAsBoolean, row.boolean);
  }
  Written nan;
  nan.writer.WriteFloat(1, "", kUndefined);
  Reading in(nan.bytes);
  in.reader.ReadKey();
  EXPECT_EQ(in.reader.ReadAsInteger(), 0);
}

TEST(SectionStream, BooleanFromFloatLeavesItsBytes) {
  Written out;
  out.writer.WriteFloat(1, "", 1);
  out.writer.WriteEndOfSection();
  Reading in(out.bytes);
  in.reader.ReadKey();
  const std::size_t position = in.values.Position();
  EXPECT_FALSE(in.reader.ReadAsBoolean());
  EXPECT_EQ(in.values.Position(), position);
  EXPECT_EQ(MessageOf([&] { in.reader.ReadKey(); }), kUnexpectedValue);
}

TEST(SectionStream, KeepsTheOrderOfKeysAndValues) {
  Written out;
  out.writer.WriteFont(31, "Unknown", kFont);
  out.writer.WriteFont(32, "Known", kFont);
  out.writer.WriteInteger(33, "Wrong", 1);
  out.writer.WriteEndOfSection();
  Reading in(out.bytes);
  EXPECT_EQ(MessageOf([&] { in.reader.SkipValue(); }), "reading error 2");
  EXPECT_EQ(in.reader.ReadKey(), 31);
  EXPECT_EQ(MessageOf([&] { in.reader.ReadKey(); }), "reading error 1");
  in.reader.SkipValue();
  EXPECT_EQ(MessageOf([&] { in.reader.ReadAsString(); }), "reading error 2");
  EXPECT_EQ(in.reader.ReadKey(), 32);
  EXPECT_EQ(in.reader.ReadFont(), kFont);
  EXPECT_EQ(in.reader.ReadKey(), 33);
  EXPECT_EQ(MessageOf([&] { in.reader.ReadFont(); }), "conversion error");
  in.reader.Values().ReadInteger();
  EXPECT_EQ(in.reader.ReadKey(), 0);
  EXPECT_EQ(in.values.Left(), 0U);
}

TEST(SectionStream, RefusesBadTags) {
  for (const std::string& bytes : {"\6\2 1"s, "\6\3x1S"s, "\6\3-1S"s, "\6\3  S"s}) {
    EXPECT_EQ(MessageOf([&] { Reading(bytes).reader.ReadKey(); }), "conversion error");
  }
  Reading unknown("\6\3 1X\2\1"s);
  EXPECT_EQ(unknown.reader.ReadKey(), 1);
  EXPECT_EQ(MessageOf([&] { unknown.reader.SkipValue(); }), "conversion error");
}

TEST(SectionStream, PointBlocks) {
  const auto header = [](std::int32_t first, std::int32_t count, std::int32_t second,
                         std::int32_t entries, const char* marker) {
    Written out;
    out.writer.WriteInteger(first, "", count);
    out.writer.WriteInteger(second, "", entries);
    out.writer.Values().WriteString(marker);
    return out.bytes;
  };
  const auto read = [](const std::string& bytes) { Reading(bytes).reader.ReadPointBlockHeader(); };
  const std::string two_floats(22, '\5');
  EXPECT_EQ(MessageOf([&] { read(header(3, 1, 2, 2, "D")); }), "Stream read Error");
  EXPECT_EQ(MessageOf([&] { read(header(1, 1, 1, 2, "D")); }), "Stream Read Error");
  const struct {
    std::int32_t count, entries;
    const char* marker;
    std::string rest;
    const char* text;
  } rows[] = {
      {0, 2, "D", "", "no error"},
      {1, 2, "D", two_floats, "no error"},
      {2, 2, "D", two_floats, kUnexpectedEnd},
      {1, 3, "D", two_floats, kUnexpectedEnd},
      {5, 2, "S", two_floats, "no error"},
      {6, 2, "S", two_floats, kUnexpectedEnd},
      {1, 0x7FFFFFFF, "D", two_floats, kUnexpectedEnd},
      {2000000000, -7, "x", two_floats, kUnexpectedEnd},
      {1, -2147483647 - 1, "D", two_floats, "no error"},  // surplus must not be counted below zero
      {-1, 2, "D", two_floats, kUnexpectedValue},
  };
  for (const auto& row : rows) {
    const std::string bytes = header(1, row.count, 2, row.entries, row.marker) + row.rest;
    EXPECT_EQ(MessageOf([&] { read(bytes); }), row.text) << row.count << ' ' << row.entries;
  }

  // Another writer's third entry is a string even among floats.
  Written out;
  out.bytes = header(1, 2, 2, 3, "D");
  for (const double x : {1.0, 2.0}) {
    out.writer.WritePoint(x, x * 10);
    out.writer.WritePlainString("third");
  }
  Reading in(out.bytes);
  EXPECT_EQ(in.reader.ReadPointBlockHeader(), 2);
  EXPECT_EQ(in.reader.ReadPoint().y, 10);
  EXPECT_EQ(in.reader.ReadPoint().x, 2);
  EXPECT_EQ(in.values.Left(), 0U);

  Reading texts(header(1, 2, 2, 2, "S") +
                "\6\3"
                "1,5\6\1"
                "2\6\1"
                "3\6\1x");
  EXPECT_EQ(texts.reader.ReadPointBlockHeader(), 2);
  EXPECT_EQ(texts.reader.ReadPoint().x, 1.5);
  EXPECT_EQ(MessageOf([&] { texts.reader.ReadPoint(); }), "conversion error");
}

TEST(SectionStream, CountsOfBothModes) {
  for (const WriterMode mode : {WriterMode::Typed, WriterMode::Text}) {
    Written out(mode);
    out.writer.WriteCount(70'000);
    EXPECT_EQ(Reading(out.bytes).reader.ReadCount(), 70'000);
  }
  EXPECT_EQ(MessageOf([] { Reading("\6\1S\6\1x"s).reader.ReadCount(); }), "conversion error");
}

}  // namespace
}  // namespace tarnwick
