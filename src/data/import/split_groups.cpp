#include "data/import/split_groups.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/word_list.h"
#include "data/columns/block_parameter.h"
#include "data/columns/cycling_columns.h"
#include "data/columns/sign_columns.h"
#include "data/columns/value_order.h"
#include "data/import/split_runs.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kMostRows = 200'000;  // read to find out
constexpr std::size_t kMostCandidates = 6;
constexpr std::size_t kFewestRowsOfGroup = 3;  // in the mean

/// The rows of one kind.
struct Group {
  std::size_t rows = 0, rises = 0, falls = 0;
  double last_x = 0;
  bool may_stand = false;
  bool stands = false;  ///< an X comes twice, which it may not

  void Take(double x) {
    if (rows > 0) {
      rises += x > last_x ? 1 : 0;
      falls += x < last_x ? 1 : 0;
      stands = stands || (x == last_x && !may_stand);
    }
    last_x = x;
    ++rows;
  }
  /// X goes one way in most rows, but stands or goes back in one of twenty: a line through them goes back and forth.
  bool MostlyGoesOneWay() const {
    constexpr std::size_t kMostShare = 4, kRowsPerStep = 20;
    const std::size_t back = std::min(rises, falls), ahead = std::max(rises, falls);
    return kMostShare * back <= ahead && ahead > 0 && kRowsPerStep * (rows - ahead) >= rows;
  }
  /// X rises in every row, or falls in every one.
  bool RunsThroughout() const { return rows > 0 && std::max(rises, falls) + 1 == rows; }
  /// X goes one way but where it starts over, once in ten rows at most; so many times may be allowed beyond.
  bool GoesOneWay(std::size_t more = 0) const {
    constexpr std::size_t kRowsOfPiece = 10;
    return !stands && kRowsOfPiece * std::min(rises, falls) <= rows + kRowsOfPiece * more;
  }
};

/// A column of texts, and what its kinds of rows are.
struct Candidate {
  std::int32_t column = 0;
  std::map<std::string, std::size_t> places;
  std::vector<std::string> names;  ///< as they come
  std::vector<Group> groups;
  bool is_parameter = false;  ///< by which blocks of rows are known (FindBlockParameter)
  bool few = true;            ///< it tells a few kinds apart
  bool possible = true;       ///< and each is a curve

  void Take(std::string text, double x) {
    if (text.empty()) possible = false;
    if (text.empty()) return;
    const auto [place, is_new] = places.try_emplace(std::move(text), groups.size());
    if (is_new) {
      few = groups.size() < kMostRuns;
      names.push_back(place->first);
      groups.emplace_back();
      groups.back().may_stand = is_parameter;
    }
    groups[place->second].Take(x);
    possible = possible && groups[place->second].GoesOneWay(1);
  }

  bool TellsKinds(std::size_t rows) const {
    return groups.size() > 1 && rows >= kFewestRowsOfGroup * groups.size();
  }

  /// Where one of the kinds starts over none of them is that of a row or two.
  bool PartsRows(std::size_t rows) const {
    const auto starts_over = [](const Group& group) {
      return std::min(group.rises, group.falls) > 0;
    };
    const auto is_rare = [](const Group& group) { return group.rows < kFewestRowsOfGroup; };
    return possible && TellsKinds(rows) &&
           std::ranges::all_of(groups, [](const Group& group) { return group.GoesOneWay(); }) &&
           (std::ranges::none_of(groups, starts_over) || std::ranges::none_of(groups, is_rare));
  }
};

/// "g", "r", "i", "g", "r", "i": a few kinds, always in one order.
bool TakeTurns(const std::vector<std::string>& texts) {
  constexpr std::size_t kMostKinds = 12, kFewestTurns = 3;
  const auto again =
      texts.empty() ? texts.end() : std::find(texts.begin() + 1, texts.end(), texts.front());
  const auto kinds = static_cast<std::size_t>(again - texts.begin());
  if (kinds < 2 || kinds > kMostKinds || texts.size() < kFewestTurns * kinds) return false;
  // A mark on every fourth row is a flag.
  std::vector<std::string> turn(texts.begin(), again);
  std::ranges::sort(turn);
  if (std::ranges::adjacent_find(turn) != turn.end()) return false;
  for (std::size_t i = kinds; i < texts.size(); ++i) {
    if (texts[i] != texts[i - kinds]) return false;
  }
  return true;
}

/// X stands still or turns back among the rows looked at.
bool TurnsOrStands(const std::vector<double>& x) {
  return !IsMonotone(x) || std::ranges::adjacent_find(x) != x.end();
}

/// Columns whose first texts repeat, as kinds do; where X rises in every row, as kinds do that take turns.
std::vector<Candidate> CandidatesIn(const ImportSource& source, std::int32_t x) {
  const std::vector<std::int32_t> cycling = FindCyclingColumns(source, x);
  const auto numbers_objects = [&](std::int32_t column) {
    return std::ranges::find(cycling, column) != cycling.end() && NumbersObjects(source, x, column);
  };
  const bool rises = x >= 0 && !TurnsOrStands(source.GuessOf(x).values);
  const std::optional<std::int32_t> parameter = FindBlockParameter(source, x);
  std::vector<Candidate> candidates;
  for (std::size_t i = 0; i < std::min(source.samples.size(), source.columns.size()); ++i) {
    const auto column = static_cast<std::int32_t>(i);
    const bool of_time =
        std::ranges::find(source.time_columns, column) != source.time_columns.end();
    const bool may_tell =
        !source.columns[i].has_numbers || numbers_objects(column) || parameter == column;
    if (!may_tell || of_time || candidates.size() == kMostCandidates) continue;
    if (AreSigns(source.samples[i]) || (rises && !TakeTurns(source.samples[i]))) continue;
    std::vector<std::string> texts = source.samples[i];
    std::ranges::sort(texts);
    const auto kinds = std::unique(texts.begin(), texts.end()) - texts.begin();
    if (2 * kinds > std::ssize(texts)) continue;
    candidates.emplace_back();
    candidates.back().column = column;
    candidates.back().is_parameter = parameter == column;
  }
  return candidates;
}

/// The row at hand gives a point of some DataSet.
bool GivesPoint(const ImportResult& result, TDataSupplier& supplier) {
  return std::ranges::any_of(result.series, [&supplier](const auto& series) {
    const TDSInfo& info = series->Source();
    return supplier.ReadValue(info.y_column_index, info.YFormat).has_value();
  });
}

/// The first column that parts the rows, and where none does the first that tells kinds of rows apart which a line joins.
struct FoundGroups {
  std::optional<Candidate> parting;
  std::optional<Candidate> joined;
};

FoundGroups FindGroups(const ImportSource& source, const ImportResult& result) {
  const TDSInfo& info = result.series.front()->Source();
  std::vector<Candidate> candidates = CandidatesIn(source, info.x_column_index);
  TDataSupplier& supplier = *source.supplier;
  std::size_t rows = 0;
  Group all;
  supplier.FirstRow();
  supplier.SkipRows(info.FileHasHeaders - supplier.HeaderRowsPassed());
  for (; !supplier.AtEnd() && !candidates.empty(); supplier.NextRow()) {
    const std::optional<double> x = supplier.ReadValue(info.x_column_index, info.XFormat);
    if (!x || !GivesPoint(result, supplier)) continue;
    if (std::cmp_equal(++rows, kMostRows)) return {};
    all.Take(*x);
    for (Candidate& candidate : candidates) candidate.Take(supplier.TextAt(candidate.column), *x);
    std::erase_if(candidates, [](const Candidate& candidate) { return !candidate.few; });
  }
  // Of a time in several columns only now it is known that it rises.
  if (info.x_column_index == kJoinedTimeColumn && all.RunsThroughout()) {
    std::erase_if(candidates, [&](const Candidate& candidate) {
      return !TakeTurns(source.samples[static_cast<std::size_t>(candidate.column)]);
    });
  }
  const auto first = [&candidates](auto is) {
    const auto found = std::ranges::find_if(candidates, is);
    return found == candidates.end() ? std::nullopt : std::optional(std::move(*found));
  };
  if (auto parting = first([rows](const Candidate& one) { return one.PartsRows(rows); })) {
    return {std::move(parting), std::nullopt};
  }
  if (!all.MostlyGoesOneWay()) return {};
  return {std::nullopt, first([rows](const Candidate& one) { return one.TellsKinds(rows); })};
}

void TellOfJoined(const ImportSource& source, std::int32_t x,
                  const std::optional<Candidate>& joined, std::vector<std::string>& notes) {
  if (joined) {
    notes.push_back("the rows belong to " + std::to_string(joined->names.size()) + " kinds of " +
                    source.Quoted(joined->column) + " and are shown together");
    return;
  }
  std::vector<std::string> names;
  for (const std::int32_t column : FindCyclingColumns(source, x)) {
    names.push_back(source.Quoted(column));
  }
  if (names.empty()) return;
  notes.push_back(Listed(names) + (names.size() == 1 ? " goes" : " go") +
                  " through the same values at each " + source.Quoted(x) +
                  ": what belongs to one after the other is shown together");
}

std::unique_ptr<TDataSeries> SeriesOf(const TDataSeries& whole, const std::string& name,
                                      const Candidate& groups, const std::string& column,
                                      std::size_t number, const SeriesFactory& make) {
  std::unique_ptr<TDataSeries> series = make();
  DataState state = series->State();
  state.settings = whole.Settings();
  state.errors = {whole.Errors().y, whole.Errors().x, {}, {}};
  state.settings.source.GroupColumn = column;
  state.settings.source.GroupValue = groups.names[number];
  series->SetState(state);
  std::string shown = name + groups.names[number];
  std::ranges::replace_if(
      shown, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  series->SetSeriesName(shown);
  return series;
}

/// There are rows enough for several curves over a column of X.
bool MayHoldGroups(const ImportSource& source, const ChosenColumns& columns) {
  constexpr std::size_t kFewest = 2 * kFewestRowsOfGroup;
  if (columns.x == kRowNumberColumn || !columns.own_x.empty() || source.samples.empty()) {
    return false;
  }
  const std::vector<double>& x = source.GuessOf(columns.x).values;
  // Of a time in several columns nothing is known yet.
  if (columns.x == kJoinedTimeColumn) return true;
  return x.size() >= kFewest;
}

/// A parameter that names the curves is none of them.
void LeaveOut(std::int32_t parameter, ImportResult& result) {
  if (result.series.size() < 2) return;
  std::erase_if(result.series, [parameter](const auto& series) {
    return series->Source().y_column_index == parameter;
  });
}

/// What numbers objects and what is the same for each of them, where they are parted, is drawn no more.
void LeaveOutCycling(const ImportSource& source, const ChosenColumns& columns,
                     ImportResult& result) {
  const std::vector<std::int32_t> cycling = FindCyclingColumns(source, columns.x);
  std::vector<std::string> names;
  for (std::size_t i = result.series.size(); i > 0 && result.series.size() > 1; --i) {
    const std::int32_t column = result.series[i - 1]->Source().y_column_index;
    if (std::ranges::find(cycling, column) == cycling.end()) continue;
    names.insert(names.begin(), source.Quoted(column));
    result.series.erase(result.series.begin() + static_cast<std::ptrdiff_t>(i - 1));
  }
  if (names.empty()) return;
  result.notes.push_back(Listed(names) + (names.size() == 1 ? " is" : " are") +
                         " left out: the same at each " + source.Quoted(columns.x));
}

}  // namespace

bool SplitGroups(ImportResult& result, const ImportSource& source, const ChosenColumns& columns,
                 const LoadOptions& load, const SeriesFactory& make) {
  if (result.cancelled || !MayHoldGroups(source, columns)) return false;
  const FoundGroups found = FindGroups(source, result);
  const std::optional<Candidate>& groups = found.parting;
  if (!groups) {
    TellOfJoined(source, columns.x, found.joined, result.notes);
    return false;
  }
  if (groups->groups.size() * result.series.size() > kMostRunDataSets) return false;
  const std::string column = source.ReferenceTo(groups->column);
  // A number alone would say little.
  const bool numbered = source.GuessOf(groups->column).has_numbers;
  const std::string label = numbered ? source.NameOf(groups->column) + " " : std::string();
  if (numbered && !columns.y_is_stated) {
    if (groups->is_parameter) LeaveOut(groups->column, result);
    LeaveOutCycling(source, columns, result);
  }
  std::vector<std::unique_ptr<TDataSeries>> split;
  std::vector<TDataSeries*> all;
  for (const auto& whole : result.series) {
    const std::string name = result.series.size() == 1 ? "" : whole->SeriesName() + ", ";
    for (std::size_t i = 0; i < groups->names.size(); ++i) {
      split.push_back(SeriesOf(*whole, name + label, *groups, column, i, make));
      all.push_back(split.back().get());
    }
  }
  result.reports = LoadShared(all, *source.supplier, load);
  result.series = std::move(split);
  result.cancelled = result.reports.front().cancelled;
  result.notes.push_back("the rows belong to " + std::to_string(groups->names.size()) +
                         " kinds of " + source.Quoted(groups->column) +
                         ", each is a DataSet of its own (--whole-table keeps them together)");
  return true;
}

}  // namespace tarnwick
