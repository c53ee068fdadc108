#include "data/guess/format_notes.h"

#include <algorithm>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "data/guess/no_table.h"
#include "data/guess/other_texts.h"

namespace tarnwick {
namespace {

constexpr std::size_t kOddShare = 50;  // one odd row of so many is told

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

void RequireTable(const TextFormat& format, std::string_view text, const std::string& name,
                  TableBy by) {
  if (const std::string why = WhyNoTable(text, format, by); !why.empty()) {
    throw FileError(why, name, "");
  }
  if (format.is_table) return;
  throw FileError("The file holds no table of numbers", name, WhatStandsInstead(text, format));
}

std::string OptionToRead(std::int32_t headers) {
  return "--headers " + std::to_string(headers) + " reads it";
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
    notes.push_back("the file holds " + std::to_string(count) +
                    " tables: read is the one from line " +
                    std::to_string(format.header_lines + 1) + " on, " +
                    (count == 2 ? "the other" : "another") + " begins at line " +
                    std::to_string(other.line) + " (" + OptionToRead(other.line - 1) + ')');
  }
  if (kOddShare * format.odd_rows > format.table_rows) {
    notes.push_back(std::to_string(format.odd_rows) + " of the first " +
                    Counted(static_cast<std::int64_t>(format.table_rows), "row") +
                    " have another number of columns than the others");
  }
  if (format.values_above > 0) {
    const bool one = format.values_above == 1;
    notes.push_back(Counted(format.values_above, "line") + " of values above the table " +
                    (one ? "is taken for a header" : "are taken for headers") + " (--headers " +
                    std::to_string(format.values_from - 1) + " has " + (one ? "it" : "them") +
                    " read)");
  }
  if (format.stacked_names) {
    const std::string upper = std::to_string(format.names_line - 1);
    notes.push_back("the names are put together from lines " + upper + " and " +
                    std::to_string(format.names_line) + " (--no-stacked-names takes the lower)");
  }
  if (std::ranges::any_of(format.columns, [](const ColumnGuess& column) {
        return column.has_uncertainties && !column.has_errors;
      })) {
    notes.emplace_back("what stands behind numbers as \"± 0.2\" or \"(5)\" is passed over");
  }
  if (std::cmp_less(format.columns.size(), format.columns_there)) {
    notes.push_back("only the first " + std::to_string(format.columns.size()) + " of " +
                    std::to_string(format.columns_there) + " columns are read");
  }
  if (format.names_apart > 0 && std::cmp_not_equal(format.names_apart, format.columns.size())) {
    notes.push_back(
        "line " + std::to_string(format.names_apart_line) + " holds " +
        std::to_string(format.names_apart) + " names for " + std::to_string(format.columns.size()) +
        " columns: " + (format.names_line > 0 ? "the last are left out" : "they are left out"));
  }
  if (format.separators == ",;" || format.separators == "\t;") {
    notes.emplace_back(
        "fields hold several values with \";\" between them: each is a column of its own");
  }
  if (format.has_remarks) notes.emplace_back("remarks behind the values are passed over");
  if (format.table_rows == 1) notes.emplace_back("the table has one row only");
  return notes;
}

}  // namespace tarnwick
