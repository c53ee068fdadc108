#include "stream/section_reader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "base/undefined.h"
#include "stream/stream_error.h"

namespace tarnwick {
namespace {

constexpr std::size_t kTagTail = 3;           // two characters of the number and the letter
constexpr std::uint64_t kSmallestFloat = 11;  // bytes of a float value
constexpr std::uint64_t kSmallestString = 2;  // bytes of an empty string value

double FloatOf(std::string_view text) {
  const std::optional<double> value = ParseNumber(text);
  if (!value) throw StreamError(kConversionError);
  return *value;
}

std::int32_t IntegerOf(std::string_view text) {
  const std::optional<std::int32_t> value = ParseInteger(text);
  if (!value) throw StreamError(kConversionError);
  return *value;
}

std::int32_t Rounded(double value) {
  if (IsUndefined(value)) return 0;
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp(std::round(value), static_cast<double>(Limits::min()),
                                              static_cast<double>(Limits::max())));
}

}  // namespace

int SectionReader::ReadKey() {
  if (!consumed_) throw StreamError(kReadingError1);
  const std::string_view tag = values_.ReadString();
  if (tag.size() < kTagTail) throw StreamError(kConversionError);
  const std::optional<std::int32_t> number = ParseInteger(tag.substr(tag.size() - kTagTail, 2));
  if (!number || *number < 0) throw StreamError(kConversionError);
  letter_ = tag.back();
  consumed_ = false;
  if (*number == 0) SkipValue();
  return *number;
}

char SectionReader::TakePending() {
  if (consumed_) throw StreamError(kReadingError2);
  consumed_ = true;
  return letter_;
}

std::string SectionReader::ReadAsString() {
  switch (TakePending()) {
    case 'S':
      return Utf8FromEightBit(values_.ReadString());
    case 'I':
      return std::to_string(values_.ReadInteger());
    case 'D':
      return ShortestText(values_.ReadFloat());
    case 'B':
      return values_.ReadBoolean() ? "true" : "false";
    default:
      throw StreamError(kConversionError);
  }
}

std::int32_t SectionReader::ReadAsInteger() {
  switch (TakePending()) {
    case 'S':
      return IntegerOf(values_.ReadString());
    case 'I':
      return values_.ReadInteger();
    case 'D':
      return Rounded(values_.ReadFloat());
    case 'B':
      return values_.ReadBoolean() ? 1 : 0;
    default:
      throw StreamError(kConversionError);
  }
}

double SectionReader::ReadAsFloat() {
  switch (TakePending()) {
    case 'S':
      return FloatOf(values_.ReadString());
    case 'I':
      return values_.ReadInteger();
    case 'D':
      return values_.ReadFloat();
    case 'B':
      return values_.ReadBoolean() ? 1.0 : 0.0;
    default:
      throw StreamError(kConversionError);
  }
}

bool SectionReader::ReadAsBoolean() {
  switch (TakePending()) {
    case 'S':
      return values_.ReadString() == "true";
    case 'I':
      return values_.ReadInteger() == 1;
    case 'D':
      return false;
    case 'B':
      return values_.ReadBoolean();
    default:
      throw StreamError(kConversionError);
  }
}

Font SectionReader::ReadFont() {
  if (TakePending() != 'F') throw StreamError(kConversionError);
  return ReadFontValues();
}

Font SectionReader::ReadFontValues() {
  Font font;
  font.name = Utf8FromEightBit(values_.ReadString());
  font.size = values_.ReadInteger();
  font.color.value = values_.ReadInteger();
  font.bold = values_.ReadBoolean();
  font.italic = values_.ReadBoolean();
  font.underline = values_.ReadBoolean();
  font.strikeOut = values_.ReadBoolean();
  return font;
}

void SectionReader::SkipValue() {
  switch (TakePending()) {
    case 'S':
      values_.ReadString();
      break;
    case 'I':
      values_.ReadInteger();
      break;
    case 'D':
      values_.ReadFloat();
      break;
    case 'B':
      values_.ReadBoolean();
      break;
    case 'F':
      ReadFontValues();
      break;
    default:
      throw StreamError(kConversionError);
  }
}

std::int32_t SectionReader::ReadPointBlockHeader() {
  if (ReadKey() != 1) throw StreamError(kPointCountMissing);
  const std::int32_t count = ReadAsInteger();
  if (ReadKey() != 2) throw StreamError(kPointEntriesMissing);
  entries_per_point_ = ReadAsInteger();
  typed_points_ = values_.ReadString() == "D";
  if (count < 0) throw StreamError(kUnexpectedValue);
  const auto surplus = static_cast<std::uint64_t>(std::max(entries_per_point_, 2) - 2);
  const std::uint64_t point_size =
      2 * (typed_points_ ? kSmallestFloat : kSmallestString) + surplus * kSmallestString;
  if (static_cast<std::uint64_t>(count) > values_.Left() / point_size) {
    throw StreamError(kUnexpectedEnd);
  }
  return count;
}

double SectionReader::ReadPointValue() {
  return typed_points_ ? values_.ReadFloat() : FloatOf(values_.ReadString());
}

StreamPoint SectionReader::ReadPoint() {
  StreamPoint point;
  point.x = ReadPointValue();
  point.y = ReadPointValue();
  for (std::int32_t entry = 2; entry < entries_per_point_; ++entry) values_.ReadString();
  return point;
}

std::int32_t SectionReader::ReadCount() {
  if (values_.ReadString() == "I") return values_.ReadInteger();
  return IntegerOf(values_.ReadString());
}

std::string SectionReader::ReadPlainString() {
  return Utf8FromEightBit(values_.ReadString());
}

}  // namespace tarnwick
