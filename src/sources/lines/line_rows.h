// Bytes of a line source as rows of numbers. Knows the form of a line, its limits and the clock; no pipe and no socket.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "data/ds_info.h"
#include "sources/streams/append_rows.h"

namespace tarnwick {

/// What a description's XDataColumn may name beside the row number (kRowNumberName): the first number of a line, which is the
/// number of the row where a line has one number only, and the moment at which the line came, as a day number (local time).
inline constexpr std::string_view kLineX = "X";
inline constexpr std::string_view kLineClock = "Clock";

inline constexpr std::size_t kLongestLine = std::size_t{64}
                                            << 10;   ///< bytes; a longer one is passed over
inline constexpr std::size_t kMostLineColumns = 64;  ///< what stands behind is left out

/// Which Y of a line the description takes: "Y", "Y2", "Y3" and so on. Throws Error for another name of YDataColumn, and for an
/// XDataColumn that stands for none of the above.
StreamColumns LineColumns(const TDSInfo& info);

/// "Y", "Y2", …: the name of the Y at a place from 0.
std::string NameOfY(std::size_t place);

/// Whether lines are read alike for both.
bool SameLines(const TDSInfo& one, const TDSInfo& other);

class LineRows {
 public:
  using Clock = std::chrono::system_clock::time_point (*)();

  /// Lines are cut and numbers read as the description says, texts without one left out by its marks of comments. Throws as
  /// LineColumns does.
  explicit LineRows(const TDSInfo& info, Clock now = &std::chrono::system_clock::now);
  ~LineRows();

  /// Adds the rows of the lines that `bytes` complete.
  void Take(std::string_view bytes, StreamRows& rows);
  /// Lines of data so far.
  std::int64_t Lines() const { return row_; }
  /// What stands there of a line is none: its rest will not come.
  void DropUnended();

 private:
  enum class XFrom : std::uint8_t { Line, RowNumber, Clock };
  class Cutter;

  void TakeLine(std::string_view line, StreamRows& rows);

  std::unique_ptr<const Cutter> cutter_;
  Clock now_;
  XFrom x_from_ = XFrom::Line;
  std::string unended_;
  bool passing_ = false;  // the rest of a line that is too long
  std::int64_t row_ = 0;
};

}  // namespace tarnwick
