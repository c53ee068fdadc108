// Rows that hold curves along the line instead of across lines: a curve that goes on from line to line, or a few long rows of
// one curve each. Where line ends are among the separators of a text, its rows are turned before anything else looks at them.
// Knows lines and fields; knows no columns.
#pragma once

#include <string>
#include <string_view>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// So few rows with so many times more fields are read as columns; other rows go on from line to line.
inline constexpr std::size_t kFewLongRows = 4;
inline constexpr std::size_t kFieldsPerLongRow = 10;

/// So many rows at most become columns over what a line of names counts.
inline constexpr std::size_t kMostTurnedRows = 200;

/// True when the separators hold the end of the line.
bool TurnsRows(const TDSInfo& info);

/// How the turned text is laid out.
TDSInfo TurnedInfo(TDSInfo info);

/// True when any number of rows would be turned, since NamesLine is a header whose names are numbers or days (FindNamesAcross).
bool TurnsOverNames(std::string_view text, const TDSInfo& info, char line_end);

/// The header lines as they are, and behind them a line for each value, or for each field of a few long rows with the fields at
/// that place; lines behind the table are left out. Where NamesLine is a header whose names of long rows count something, these
/// numbers are the first column, and that line names the columns: by their stem, and by the labels of the rows. So it is however
/// many rows there are, the first kMostTurnedRows of them, where the names are numbers or days behind those of labels
/// (FindNamesAcross).
std::string TurnedText(std::string_view text, const TDSInfo& info, char line_end);

}  // namespace tarnwick
