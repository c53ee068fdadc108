#include "graph/files/data_text_file.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

#include "base/day_number.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "base/whole_file.h"
#include "base/word_list.h"
#include "data/columns/error_names.h"
#include "data/fields/text_fields.h"
#include "data/names/text_names.h"
#include "graph/all_series.h"
#include "graph/files/text_rows.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 16;
/// Days: what a time to the millisecond leaves of one that has no more.
constexpr double kLostInMoment = 1e-10;
constexpr double kDaysOfYear = 366;
constexpr const char* kMomentFormats[] = {"yyyy-mm-dd", "yyyy-mm-dd hh:nn:ss",
                                          "yyyy-mm-dd hh:nn:ss.zzz"};
constexpr std::string_view kMarkers = "'\"";
constexpr char kMarker = '"';
constexpr std::string_view kUsualSeparators = "\t,;|";

/// A name as one field of one line. Quoted where a reader would split it, or take a quote in it for its end.
std::string NameField(std::string_view name, std::string_view separators) {
  std::string text(name);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  const std::string_view trimmed = TrimBlankBytes(text);
  const bool starts_with_marker =
      !trimmed.empty() && kMarkers.find(trimmed.front()) != kMarkers.npos;
  const bool splits = text.find_first_of(separators) != text.npos ||
                      text.find_first_of(kUsualSeparators) != text.npos;
  if (!starts_with_marker && !splits) return text;
  std::string quoted(1, kMarker);
  for (const char c : text) quoted.append(c == kMarker ? 2 : 1, c);
  return quoted + kMarker;
}

bool ShareErrorsOfX(const TSeries& left, const TSeries& right) {
  LineCursor one(left), other(right);
  for (; !one.AtEnd() && !other.AtEnd(); one.Next(), other.Next()) {
    const double error = one.ErrorOfX(), there = other.ErrorOfX();
    const bool same = error == there || (IsUndefined(error) && IsUndefined(there));
    if (one.X() != other.X() || !same) return false;
  }
  return one.AtEnd() && other.AtEnd();
}

/// One column of X serves all DataSets: only errors that are the same in all have a place behind it.
bool HasErrorsOfX(const std::vector<const TSeries*>& series) {
  return !series.empty() && HasXErrors(series.front()->Errors()) &&
         std::ranges::all_of(series, [&](const TSeries* one) {
           return one == series.front() || ShareErrorsOfX(*series.front(), *one);
         });
}

/// The line of names. An empty name would shift those behind it.
std::string NamesLine(const std::vector<const TSeries*>& series, const DataTextOptions& options) {
  const auto field = [&](const std::string& name, std::int32_t column) {
    const bool blank = TrimBlankBytes(name).empty();
    return NameField(blank ? UnnamedColumn(column) : name, options.separators);
  };
  std::string line;
  std::int32_t column = 0;
  const auto add = [&](const std::string& name, bool errors) {
    if (column > 0) line += options.separators.front();
    line += field(name, column++);
    if (!errors) return;
    line += options.separators.front();
    line += field(ErrorsHeading(name), column++);
  };
  add(options.x_heading, HasErrorsOfX(series));
  for (const TSeries* one : series) add(one->SeriesName(), HasYErrors(one->Errors()));
  return line += '\n';
}

void AddError(double error, const DataTextOptions& options, std::string& text) {
  text += options.separators.front();
  if (!IsUndefined(error)) text += ShortestText(error);
}

/// A row without values, which breaks a line: empty where an empty line does, since X goes on behind it in the one direction.
std::string GapRow(const SharedRows& block, std::size_t fields, const DataTextOptions& options) {
  if (!block.follows_first) return "\n";
  const char separator = options.separators.front();
  // Separators that are blanks would make it an empty line, behind which a loop would be another run.
  const std::string_view field = IsBlankByte(separator) ? "\"\"" : "";
  std::string row(field);
  for (std::size_t i = 1; i < fields; ++i) (row += separator) += field;
  return row + '\n';
}

/// Hands the table to `sink`, a callable that takes a std::string& and empties it, in pieces.
template <class Sink>
void WriteTable(const std::vector<const TSeries*>& series, const DataTextOptions& options,
                Sink&& sink) {
  if (options.separators.empty()) throw Error("No Text Separators supplied");
  std::string text = NamesLine(series, options);
  std::vector<LineCursor> cursors = CursorsOf(series);
  const bool errors_of_x = HasErrorsOfX(series);
  const std::size_t fields =
      1 + static_cast<std::size_t>(errors_of_x) + series.size() +
      static_cast<std::size_t>(std::ranges::count_if(cursors, &LineCursor::HasErrorOfY));
  const auto write_row = [&](const LineCursor& first, const std::vector<bool>& here) {
    const double x = first.X();
    text += options.x_format.empty() ? ShortestText(x) : FormatDay(x, options.x_format);
    if (errors_of_x) AddError(first.ErrorOfX(), options, text);
    for (std::size_t i = 0; i < cursors.size(); ++i) {
      const LineCursor& cursor = cursors[i];
      text += options.separators.front();
      if (here[i]) text += ShortestText(cursor.Y());
      if (cursor.HasErrorOfY()) AddError(here[i] ? cursor.ErrorOfY() : kUndefined, options, text);
    }
    text += '\n';
    if (text.size() >= kPiece) sink(text);
  };
  ForEachRow(SharedRowsOf(series, options.x_tolerance), cursors, options.x_tolerance, write_row,
             [&](const SharedRows& block) { text += GapRow(block, fields, options); });
  sink(text);
}

std::vector<const TSeries*> ColumnsOf(const TxyGraph& graph) {
  std::vector<const TSeries*> series;
  for (const TSeries& one : AllSeries(graph)) series.push_back(&one);
  return series;
}

/// Which of the formats keeps X; their number for none.
std::size_t FormatThatKeeps(double x, std::size_t from) {
  if (!(std::abs(x) >= kDaysOfYear) || !IsCalendarDay(x)) return std::size(kMomentFormats);
  while (from < std::size(kMomentFormats)) {
    const std::optional<double> read = ParseDay(FormatDay(x, kMomentFormats[from]));
    if (read && std::abs(*read - x) <= kLostInMoment) break;
    ++from;
  }
  return from;
}

/// The shortest format that keeps every X, that a column has one; empty when none does.
std::string MomentFormat(const std::vector<const TSeries*>& series) {
  std::size_t format = 0;
  for (const TSeries* const one : series) {
    for (LineCursor cursor(*one); !cursor.AtEnd(); cursor.Next()) {
      format = FormatThatKeeps(cursor.X(), format);
      if (format == std::size(kMomentFormats)) return "";
    }
  }
  return kMomentFormats[format];
}

/// That X of several quantities stands in one column, a sentence; empty for one quantity.
std::string JoinedQuantities(const std::vector<const TSeries*>& series) {
  const TSeries* first = nullptr;
  for (const TSeries* const one : series) {
    const std::string& quantity = one->Source().XDataColumn;
    if (quantity.empty() || one->Points().Empty()) continue;
    if (!first) first = one;
    if (quantity == first->Source().XDataColumn) continue;
    return "\"" + first->SeriesName() + "\" is over " + first->Source().XDataColumn + ", \"" +
           one->SeriesName() + "\" over " + quantity +
           ": the table has one column of X for all DataSets. A graph file keeps them apart.";
  }
  return "";
}

/// That the orders of loops differ, a sentence; empty where they do not.
std::string OrdersApart(const std::vector<const TSeries*>& series) {
  const std::vector<SharedRows> blocks = SharedRowsOf(series, 0);
  if (blocks.size() < 2) return "";
  return "The points of \"" + series[blocks[0].columns.front()]->SeriesName() + "\" and \"" +
         series[blocks[1].columns.front()]->SeriesName() +
         "\" came in different orders: the rows of one stand below those of the other.";
}

}  // namespace

std::string DataText(const std::vector<const TSeries*>& series, const DataTextOptions& options) {
  std::string whole;
  WriteTable(series, options, [&whole](std::string& text) {
    whole += text;
    text.clear();
  });
  return whole;
}

std::string LeftOutOfTable(const TxyGraph& graph) {
  const std::vector<const TSeries*> series = ColumnsOf(graph);
  const auto with =
      std::ranges::find_if(series, [](const TSeries* one) { return HasXErrors(one->Errors()); });
  std::string told = JoinedQuantities(series);
  AddSentence(told, OrdersApart(series));
  AddSentence(told, GapsLost(series, 0));
  if (with == series.end() || HasErrorsOfX(series)) return told;
  AddSentence(told, "The errors of X of \"" + (*with)->SeriesName() +
                        "\" are left out: the table has one column of X for all DataSets. A graph "
                        "file keeps them.");
  return told;
}

std::string CsvText(const TxyGraph& graph) {
  const std::vector<const TSeries*> series = ColumnsOf(graph);
  DataTextOptions options;
  options.separators = ",";
  options.x_tolerance = 0;
  if (!series.empty()) options.x_heading = series.front()->Source().XDataColumn;
  if (graph.Axis(AxisId::X).ShowAsTime()) options.x_format = MomentFormat(series);
  return DataText(series, options);
}

void SaveDataText(const TxyGraph& graph, const std::filesystem::path& path) {
  const std::vector<const TSeries*> series = ColumnsOf(graph);
  DataTextOptions options;
  options.x_heading = graph.Axis(AxisId::X).ShowAsTime() ? "Time" : "Time (hours)";
  WholeFile file(path);
  WriteTable(series, options, [&file](std::string& text) {
    file.Write(text);
    text.clear();
  });
  file.Commit();
}

}  // namespace tarnwick
