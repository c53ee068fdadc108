// What the program that reads workbooks answers: the sheets, and one of them as text. Knows sheets; knows no file's bytes.
#pragma once

#include <string>

#include "readers/workbook/workbook.h"

namespace tarnwick {

/// What of a workbook is wanted.
struct SheetRequest {
  std::string
      sheet;  ///< empty: the one with the most numbers, of those that are not hidden if any has numbers
  CellRange range;
};

/// Lines "sheet<tab>NAME<tab>NUMBERS" for all sheets (NUMBERS counts those within the range, of sheets that were read),
/// "read<tab>NAME",
/// "errors<tab>COUNT" of cells in it without a result, an empty line, and behind it the text of the sheet. Throws Error, saying
/// so, when there is no such sheet, and when there are no numbers.
std::string AnswerOf(Workbook& workbook, const SheetRequest& request);

}  // namespace tarnwick
