// Reads sections key by key, converting each value to the type the caller asks for and skipping what it does not know.
// Reads both writer modes, since it goes by the letters it finds. Knows nothing of what the keys mean.
#pragma once

#include <cstdint>
#include <string>

#include "base/font.h"
#include "stream/value_reader.h"

namespace tarnwick {

/// X and Y of one point of a point block.
struct StreamPoint {
  double x = 0;
  double y = 0;
};

/// Every operation throws StreamError with one of the texts of stream_error.h.
class SectionReader {
 public:
  /// `values` must outlive the reader.
  explicit SectionReader(ValueReader& values) : values_(values) {}

  ValueReader& Values() { return values_; }

  /// The number of the next key; its value is pending then. 0: the section is over and the mark's value is skipped.
  int ReadKey();
  /// The letter of the last tag read: S, I, D, B or F.
  char Letter() const { return letter_; }

  // The pending value, converted by its letter.
  std::string ReadAsString();  ///< UTF-8
  std::int32_t
  ReadAsInteger();  ///< from "D": rounded to the nearest, halves away from zero, saturating; NaN is 0
  double ReadAsFloat();
  /// From "S" true exactly for "true", from "I" for 1. From "D": false, and the float's bytes stay unread.
  bool ReadAsBoolean();
  Font ReadFont();  ///< only from "F"
  void SkipValue();

  /// The number of points that follow; never more than the bytes left can hold.
  std::int32_t ReadPointBlockHeader();
  /// The next point; entries after the second are read as strings and dropped.
  StreamPoint ReadPoint();

  /// A count outside sections ("I" and an integer, or "S" and its text).
  std::int32_t ReadCount();
  /// A text outside sections, UTF-8.
  std::string ReadPlainString();

 private:
  char TakePending();
  double ReadPointValue();
  Font ReadFontValues();

  ValueReader& values_;
  char letter_ = 0;
  bool consumed_ = true;
  std::int32_t entries_per_point_ = 2;
  bool typed_points_ = true;
};

}  // namespace tarnwick
