// How one line of text is cut into fields. Knows separators, markers and widths; knows no numbers and no files.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/ds_info.h"
#include "data/fields/joined_time.h"
#include "data/fields/missing_values.h"

namespace tarnwick {

/// Blanks, tabs, returns and every other control count as blank at the ends of a field.
constexpr bool IsBlankByte(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}
std::string_view TrimBlankBytes(std::string_view text);

/// Columns that make one time together, by their positions.
struct TimeParts {
  std::vector<TimePart> parts;
  std::vector<std::int32_t> columns;  ///< as many
};

/// The text settings of a description, made ready for reading lines. The columns of `time` are for who knows their names.
struct TextLayout {
  enum Kind : std::uint8_t {
    kPlain = 0,
    kSeparator = 1,
    kMarker = 2,
    kComment = 4,
    kLongComment = 8  ///< may begin one of the longer marks
  };

  TextLayout(const TDSInfo& info, char line_end_byte);

  /// Fields are told by their place on the line, not by separators.
  bool ByPlace() const { return width > 0 || !cuts.empty(); }
  bool IsSeparator(char c) const { return (Of(c) & kSeparator) != 0; }
  bool IsMarker(char c) const { return (Of(c) & kMarker) != 0; }
  /// True when a comment begins at [at, end), which is not empty.
  bool BeginsComment(const char* at, const char* end) const {
    const std::uint8_t kind = Of(*at);
    return (kind & kComment) != 0 || ((kind & kLongComment) != 0 && BeginsLongComment(at, end));
  }
  /// The mark that [at, end) begins with, or nothing.
  std::string_view CommentMark(const char* at, const char* end) const;
  std::uint8_t Of(char c) const { return kinds[static_cast<unsigned char>(c)]; }

  std::array<std::uint8_t, 256> kinds{};
  std::vector<std::string> long_comments;  ///< marks of more than one character
  MissingValues missing;                   ///< what stands for no value
  TimeParts time;                          ///< the columns that kJoinedTimeColumn is made of
  bool merge = true;
  std::int32_t width = 0;  ///< characters per field; 0 = not by width
  std::vector<std::int32_t>
      cuts;  ///< where fields begin, in characters from 0; empty = not by cuts
  char line_end = '\n';

 private:
  bool BeginsLongComment(const char* at, const char* end) const;
};

/// True when a line behind the headers is a row of data: it is not blank and does not begin, behind blanks, with one of the
/// description's comment marks (one that separates or encloses fields marks nothing).
bool IsDataLine(std::string_view line, const TextLayout& layout);

/// Takes the fields off a line, one at a time. A field is given as it stands on the line, markers included. A field that
/// begins with a marker goes on to the marker that closes it, whatever stands between; a doubled marker inside is not
/// the end; a marker that is never closed is a plain character.
class FieldCursor {
 public:
  FieldCursor(std::string_view line, const TextLayout& layout);
  std::optional<std::string_view> Next();

 private:
  std::string_view NextByPlace();
  void PassCharacters(std::int64_t count);
  const char* FieldEnd(const char* begin) const;

  const TextLayout& layout_;
  const char* at_;
  const char* end_;
  bool more_;
  bool characters_are_bytes_ = true;
  std::size_t cut_ = 0;  // of the field that comes next
};

/// The field at a position from 0, or nothing behind the last.
std::optional<std::string_view> FieldAt(std::string_view line, const TextLayout& layout,
                                        std::int32_t column);

/// How many fields a line has, counting at most `limit`.
std::int32_t CountFields(std::string_view line, const TextLayout& layout, std::int32_t limit);

/// A field without its markers (a doubled marker inside becomes one) and without blanks at its ends. The answer views
/// the field itself, or `buffer` when characters had to be dropped.
std::string_view FieldText(std::string_view field, const TextLayout& layout, std::string& buffer);
/// The same of all fields of a line.
std::vector<std::string> FieldTexts(std::string_view line, const TextLayout& layout);

}  // namespace tarnwick
