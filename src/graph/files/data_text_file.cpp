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
#include "data/import/error_names.h"
#include "data/series/point_errors.h"
#include "data/text/text_names.h"
#include "graph/turning_back.h"
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

/// Walks the points of one DataSet.
class PointCursor {
 public:
  explicit PointCursor(const TDataSeries& series)
      : points_(series.Points()), errors_(series.Errors()) {
    Settle();
  }

  bool AtEnd() const { return offset_ == view_.x.size(); }
  double X() const { return view_.x[offset_]; }
  double Y() const { return view_.y[offset_]; }
  bool HasErrorOfY() const { return HasYErrors(errors_); }
  double ErrorOfY() const { return YErrorOf(errors_, Here()); }
  double ErrorOfX() const { return XErrorOf(errors_, Here()); }
  void Next() {
    ++offset_;
    Settle();
  }

 private:
  void Settle() {
    while (AtEnd() && next_chunk_ < points_.ChunkCount()) {
      view_ = points_.Chunk(next_chunk_++);
      offset_ = 0;
    }
  }

  Point Here() const { return {view_.chunk->Id(offset_), X(), Y()}; }

  const PointChain& points_;
  const PointErrors& errors_;
  ChunkView view_;
  std::size_t next_chunk_ = 0;
  std::size_t offset_ = 0;
};

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

bool ShareErrorsOfX(const TDataSeries& left, const TDataSeries& right) {
  PointCursor one(left), other(right);
  for (; !one.AtEnd() && !other.AtEnd(); one.Next(), other.Next()) {
    const double error = one.ErrorOfX(), there = other.ErrorOfX();
    const bool same = error == there || (IsUndefined(error) && IsUndefined(there));
    if (one.X() != other.X() || !same) return false;
  }
  return one.AtEnd() && other.AtEnd();
}

/// One column of X serves all DataSets: only errors that are the same in all have a place behind it.
bool HasErrorsOfX(const std::vector<const TDataSeries*>& series) {
  return !series.empty() && HasXErrors(series.front()->Errors()) &&
         std::ranges::all_of(series, [&](const TDataSeries* one) {
           return one == series.front() || ShareErrorsOfX(*series.front(), *one);
         });
}

/// The line of names. An empty name would shift those behind it.
std::string NamesLine(const std::vector<const TDataSeries*>& series,
                      const DataTextOptions& options) {
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
  for (const TDataSeries* one : series) add(one->SeriesName(), HasYErrors(one->Errors()));
  return line += '\n';
}

void AddError(double error, const DataTextOptions& options, std::string& text) {
  text += options.separators.front();
  if (!IsUndefined(error)) text += ShortestText(error);
}

bool SharesRow(double x, double row_x, double tolerance) {
  if (x == row_x) return true;
  const double difference = std::abs(x - row_x);
  return difference <= tolerance && difference <= tolerance * std::abs(row_x);
}

/// Hands the table to `sink`, a callable that takes a std::string& and empties it, in pieces.
template <class Sink>
void WriteTable(const std::vector<const TDataSeries*>& series, const DataTextOptions& options,
                Sink&& sink) {
  if (options.separators.empty()) throw Error("No Text Separators supplied");
  std::string text = NamesLine(series, options);
  std::vector<PointCursor> cursors;
  cursors.reserve(series.size());
  for (const TDataSeries* one : series) cursors.emplace_back(*one);
  const bool errors_of_x = HasErrorsOfX(series);
  while (true) {
    const PointCursor* first = nullptr;
    for (const PointCursor& cursor : cursors) {
      if (!cursor.AtEnd() && (first == nullptr || cursor.X() < first->X())) first = &cursor;
    }
    if (first == nullptr) break;
    const double x = first->X();
    text += options.x_format.empty() ? ShortestText(x) : FormatDay(x, options.x_format);
    if (errors_of_x) AddError(first->ErrorOfX(), options, text);
    for (PointCursor& cursor : cursors) {
      text += options.separators.front();
      const bool here = !cursor.AtEnd() && SharesRow(cursor.X(), x, options.x_tolerance);
      if (here) text += ShortestText(cursor.Y());
      if (cursor.HasErrorOfY()) AddError(here ? cursor.ErrorOfY() : kUndefined, options, text);
      if (here) cursor.Next();
    }
    text += '\n';
    if (text.size() >= kPiece) sink(text);
  }
  sink(text);
}

std::vector<const TDataSeries*> AllSeries(const TxyGraph& graph) {
  std::vector<const TDataSeries*> series;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) series.push_back(&graph.Series(i));
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
std::string MomentFormat(const std::vector<const TDataSeries*>& series) {
  std::size_t format = 0;
  for (const TDataSeries* const one : series) {
    for (PointCursor cursor(*one); !cursor.AtEnd(); cursor.Next()) {
      format = FormatThatKeeps(cursor.X(), format);
      if (format == std::size(kMomentFormats)) return "";
    }
  }
  return kMomentFormats[format];
}

/// That X of several quantities stands in one column, a sentence; empty for one quantity.
std::string JoinedQuantities(const std::vector<const TDataSeries*>& series) {
  const TDataSeries* first = nullptr;
  for (const TDataSeries* const one : series) {
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

}  // namespace

std::string DataText(const std::vector<const TDataSeries*>& series,
                     const DataTextOptions& options) {
  std::string whole;
  WriteTable(series, options, [&whole](std::string& text) {
    whole += text;
    text.clear();
  });
  return whole;
}

namespace {

/// That loops lose their order, a sentence; empty where there are none.
std::string OrdersLost(const TxyGraph& graph) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (!TurnsBack(graph.Series(i))) continue;
    return "X of \"" + graph.Series(i).SeriesName() +
           "\" turns back: the table has its points in order of X. A graph file keeps the order "
           "in which they came.";
  }
  return "";
}

}  // namespace

std::string LeftOutOfTable(const TxyGraph& graph) {
  const std::vector<const TDataSeries*> series = AllSeries(graph);
  const auto with = std::ranges::find_if(
      series, [](const TDataSeries* one) { return HasXErrors(one->Errors()); });
  std::string told = JoinedQuantities(series);
  if (const std::string orders = OrdersLost(graph); !orders.empty())
    told += (told.empty() ? "" : " ") + orders;
  if (with == series.end() || HasErrorsOfX(series)) return told;
  if (!told.empty()) told += ' ';
  return told + "The errors of X of \"" + (*with)->SeriesName() +
         "\" are left out: the table has one column of X for all DataSets. A graph file keeps "
         "them.";
}

std::string CsvText(const TxyGraph& graph) {
  const std::vector<const TDataSeries*> series = AllSeries(graph);
  DataTextOptions options;
  options.separators = ",";
  options.x_tolerance = 0;
  if (!series.empty()) options.x_heading = series.front()->Source().XDataColumn;
  if (graph.Axis(AxisId::X).ShowAsTime()) options.x_format = MomentFormat(series);
  return DataText(series, options);
}

void SaveDataText(const TxyGraph& graph, const std::filesystem::path& path) {
  const std::vector<const TDataSeries*> series = AllSeries(graph);
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
