#include "stream/section_writer.h"

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "stream/stream_error.h"

namespace tarnwick {
namespace {

constexpr int kLargestKey = 99;
constexpr int kEntriesPerPoint = 2;

const char* BooleanText(bool value) {
  return value ? "true" : "false";
}

}  // namespace

SectionWriter::SectionWriter(std::string& out, WriterMode mode) : values_(out), mode_(mode) {}

void SectionWriter::WriteTag(int number, std::string_view name, char letter) {
  if (number < 0 || number > kLargestKey) throw StreamError(kIllegalCall);
  std::string tag(mode_ == WriterMode::Text ? name : std::string_view());
  if (number < 10) tag += ' ';
  tag += std::to_string(number);
  tag += letter;
  values_.WriteString(tag);
}

void SectionWriter::WriteText(std::string_view utf8) {
  values_.WriteString(EightBitFromUtf8(utf8));
}

void SectionWriter::WriteString(int number, std::string_view name, std::string_view utf8) {
  WriteTag(number, name, 'S');
  WriteText(utf8);
}

void SectionWriter::WriteInteger(int number, std::string_view name, std::int32_t value) {
  if (mode_ == WriterMode::Text) return WriteString(number, name, std::to_string(value));
  WriteTag(number, name, 'I');
  values_.WriteInteger(value);
}

void SectionWriter::WriteFloat(int number, std::string_view name, double value) {
  if (mode_ == WriterMode::Text) return WriteString(number, name, ShortestText(value));
  WriteTag(number, name, 'D');
  values_.WriteFloat(value);
}

void SectionWriter::WriteBoolean(int number, std::string_view name, bool value) {
  if (mode_ == WriterMode::Text) return WriteString(number, name, BooleanText(value));
  WriteTag(number, name, 'B');
  values_.WriteBoolean(value);
}

void SectionWriter::WriteFont(int number, std::string_view name, const Font& font) {
  WriteTag(number, name, 'F');
  WriteText(font.name);
  values_.WriteInteger(font.size);
  values_.WriteInteger(font.color.value);
  values_.WriteBoolean(font.bold);
  values_.WriteBoolean(font.italic);
  values_.WriteBoolean(font.underline);
  values_.WriteBoolean(font.strikeOut);
}

void SectionWriter::WriteEndOfSection() {
  WriteBoolean(0, "EndOfSection", false);
}

void SectionWriter::WritePointBlockHeader(std::int32_t count) {
  WriteInteger(1, "NumberOfPoints", count);
  WriteInteger(2, "EntriesPerPoint", kEntriesPerPoint);
  values_.WriteString(mode_ == WriterMode::Text ? "S" : "D");
}

void SectionWriter::WritePoint(double x, double y) {
  if (mode_ == WriterMode::Text) {
    values_.WriteString(ShortestText(x));
    values_.WriteString(ShortestText(y));
  } else {
    values_.WriteFloat(x);
    values_.WriteFloat(y);
  }
}

void SectionWriter::WriteCount(std::int32_t count) {
  if (mode_ == WriterMode::Text) {
    values_.WriteString("S");
    values_.WriteString(std::to_string(count));
  } else {
    values_.WriteString("I");
    values_.WriteInteger(count);
  }
}

void SectionWriter::WritePlainString(std::string_view utf8) {
  WriteText(utf8);
}

}  // namespace tarnwick
