// Writes sections: numbered, typed keys with their values, an end mark, a block of points. Knows nothing of what the keys
// mean. Texts are UTF-8 here and 8-bit in the stream.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/font.h"
#include "stream/value_writer.h"

namespace tarnwick {

/// Typed: short tags, values in their own kind; what files are. Text: tags with key names, values as text; for people.
enum class WriterMode { Typed, Text };

class SectionWriter {
 public:
  /// Appends to `out`, which must outlive the writer.
  explicit SectionWriter(std::string& out, WriterMode mode = WriterMode::Typed);

  WriterMode Mode() const { return mode_; }
  ValueWriter& Values() { return values_; }

  // One key each: its tag and its value. Numbers are 0 to 99; a greater one throws StreamError kIllegalCall.
  void WriteString(int number, std::string_view name, std::string_view utf8);
  void WriteInteger(int number, std::string_view name, std::int32_t value);
  void WriteFloat(int number, std::string_view name, double value);
  void WriteBoolean(int number, std::string_view name, bool value);
  /// Fonts keep the letter "F" and their seven values in either mode.
  void WriteFont(int number, std::string_view name, const Font& font);

  void WriteEndOfSection();
  /// The two counting keys (points; entries per point, 2) and the marker of the points' kind.
  void WritePointBlockHeader(std::int32_t count);
  void WritePoint(double x, double y);

  /// A count outside sections: "I" and an integer, in text mode "S" and its decimal text.
  void WriteCount(std::int32_t count);
  /// A text outside sections, as one string value in either mode.
  void WritePlainString(std::string_view utf8);

 private:
  void WriteTag(int number, std::string_view name, char letter);
  void WriteText(std::string_view utf8);

  ValueWriter values_;
  WriterMode mode_;
};

}  // namespace tarnwick
