#include "data/guess/format_notes.h"

#include <algorithm>

#include "base/error.h"
#include "base/number_text.h"
#include "data/text/text_fields.h"
#include "data/text/text_lines.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kLinesLookedAt = 1000;
constexpr std::size_t kBytesLookedAt = 16 * 1024;
constexpr std::size_t kContinuedLines = 2;  // that make sure
constexpr std::size_t kOddShare = 50;       // one odd row of so many is told

/// True where lines end in a stroke that says "the record goes on": beyond a table of one row a line.
bool ContinuesLines(std::string_view text, char line_end) {
  LineWalker walker(text, line_end);
  std::size_t continued = 0;
  std::size_t lines = 0;
  for (std::int32_t i = 0; i < kLinesLookedAt && !walker.AtEnd(); ++i) {
    const std::string_view line = TrimBlankBytes(walker.Next());
    if (line.empty() || line.front() == '#') continue;
    ++lines;
    continued +=
        line.ends_with('\\') && !line.ends_with("\\\\") ? 1 : 0;  // two end a row that is typeset
  }
  return continued >= kContinuedLines && 2 * continued >= lines;
}

/// Texts whose lines look like rows of a table and are none: how they begin, what they hold, why not.
struct OtherText {
  std::string_view begins;
  std::string_view holds;
  const char* why;
};

constexpr OtherText kOtherTexts[] = {
    {"##", "##NTUPLES",
     "This is JCAMP-DX of several tables (NTUPLES), which cannot be read; save it as X and Y in "
     "two "
     "columns"},
    {">HEAD", ">FREQ",
     "This is EDI, whose values go over several lines, which cannot be read; convert them to "
     "columns"},
    {"$GP", "GGA,", "These are sentences of a receiver (NMEA), no table; convert them to columns"},
    {"$GN", "GGA,", "These are sentences of a receiver (NMEA), no table; convert them to columns"},
};

void RefuseOtherTexts(std::string_view text, const std::string& name) {
  const std::string_view head = text.substr(0, kBytesLookedAt);
  for (const OtherText& other : kOtherTexts) {
    if (head.starts_with(other.begins) && head.find(other.holds) != head.npos) {
      throw FileError(other.why, name, "");
    }
  }
}

/// The first few places of many.
std::string FirstCuts(const std::string& cuts) {
  constexpr std::ptrdiff_t kMany = 24;
  constexpr std::ptrdiff_t kMostTold = 12;
  std::size_t end = 0;
  if (std::ranges::count(cuts, ' ') < kMany) return cuts;
  for (std::ptrdiff_t i = 0; i < kMostTold; ++i) end = cuts.find(' ', end + 1);
  return cuts.substr(0, end) + " and " +
         std::to_string(std::ranges::count(cuts.substr(end + 1), ' ') + 1) + " more";
}

}  // namespace

void RequireTable(const TextFormat& format, std::string_view text, const std::string& name) {
  const bool returns_only = text.find('\n') == text.npos;
  if (ContinuesLines(text, returns_only ? '\r' : '\n')) {
    throw FileError("Each record of this file goes over several lines; such files cannot be read",
                    name, "the lines end in \"\\\"");
  }
  RefuseOtherTexts(text, name);
  if (format.is_table) return;
  throw FileError("The file holds no table of numbers", name,
                  "no lines with the same number of values follow each other");
}

std::vector<std::string> NotesOf(const TextFormat& format) {
  std::vector<std::string> notes;
  if (format.cuts_from == CutsFrom::Description) {
    notes.emplace_back("columns, names and units are those that the file describes byte by byte");
  } else if (format.cuts_from == CutsFrom::Rows) {
    notes.push_back(
        "blanks alone do not part the columns of every row: they are told by their places, "
        "from characters " +
        FirstCuts(format.column_cuts) + " on");
  }
  if (!format.other_tables.empty()) {
    const OtherTable& other = format.other_tables.front();
    const std::size_t count = format.other_tables.size() + 1;
    notes.push_back(
        "the file holds " + std::to_string(count) + " tables: read is the one from line " +
        std::to_string(format.header_lines + 1) + " on, " + (count == 2 ? "the other" : "another") +
        " begins at line " + std::to_string(other.line) + " (read with " +
        std::to_string(other.line - 1) + " header lines)");
  }
  if (kOddShare * format.odd_rows > format.table_rows) {
    notes.push_back(std::to_string(format.odd_rows) + " of the first " +
                    Counted(static_cast<std::int64_t>(format.table_rows), "row") +
                    " have another number of columns than the others");
  }
  if (format.values_above > 1) {
    notes.push_back(std::to_string(format.values_above) +
                    " lines of values above the table are taken for headers (--headers " +
                    std::to_string(format.values_from - 1) + " has them read)");
  }
  if (format.left_out_from > 0) {
    notes.push_back("the lines from " + std::to_string(format.left_out_from) +
                    " on are no part of the table and left out");
  }
  if (format.stacked_names) {
    const std::string upper = std::to_string(format.names_line - 1);
    notes.push_back("the names are put together from lines " + upper + " and " +
                    std::to_string(format.names_line) + " (--no-stacked-names takes the lower)");
  }
  if (std::ranges::any_of(format.columns, &ColumnGuess::has_uncertainties)) {
    notes.emplace_back("what stands behind numbers as \"± 0.2\" or \"(5)\" is passed over");
  }
  if (format.table_rows == 1) notes.emplace_back("the table has one row only");
  return notes;
}

}  // namespace tarnwick
