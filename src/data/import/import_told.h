// What came of reading data that the picture does not show by itself, for whoever must be told: one short sentence, the same
// in every face. Knows reports and clauses; silence is for what is certain.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "data/import/load_report.h"

namespace tarnwick {

class TDataSeries;

/// What a clause is about; each face knows how to have it otherwise.
enum class ToldAbout {
  Sampling,
  Skipping,
  Replacing,
  UnusableErrors,
  Errors,
  Moving,
  Runs,      ///< that each run of a table is a DataSet
  TableEnd,  ///< that lines behind the table are left out
  Guessing,
  Gaps,      ///< where lines are broken
  Thinning,  ///< what of a view the data base gave
  Outdated   ///< what was computed from the data as they were before
};

struct ToldClause {
  ToldAbout about = ToldAbout::Guessing;
  std::string text;         ///< "every 2000th row is shown": no capital, no full stop
  std::string option = {};  ///< of the batch program that has it otherwise: "--every 1 reads all"
  /// Where it tells of another table of the file: the header lines with which that is read.
  std::optional<std::int32_t> other_table = {};
  bool operator==(const ToldClause&) const = default;
};

using ImportTold = std::vector<ToldClause>;

/// What the reports say of their DataSets, once where they say the same, and the notes of the guess, whose option stands in
/// parentheses at the end of each: "... (--x names another)". Nothing when every row was read and nothing decided. `names` are
/// the DataSets'; reports of those that were not loaded count for nothing.
ImportTold TellImport(std::span<const LoadReport> reports, std::span<const std::string> names,
                      std::span<const std::string> notes = {});

/// That DataSets, read some time ago, hold only some of the rows of their sources: what is computed is of these.
ImportTold TellSomeRows(std::span<const TDataSeries* const> all);

/// What a note or a refusal says without the option in parentheses at its end, which is the batch program's.
std::string WithoutOption(const std::string& text);

bool IsAbout(const ImportTold& told, ToldAbout about);

/// "Every 2000th row is shown; 2 rows skipped (Y empty; first at line 17)." Empty for nothing. Options are left out.
std::string Sentence(const ImportTold& told);

}  // namespace tarnwick
