#include "import/whole_outcome.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "base/number_text.h"
#include "data/points/point_columns.h"

namespace tarnwick::testing {
namespace {

/// The points of a DataSet, up to a dozen, or the sums of more.
std::string PointsText(const TDataSeries& series) {
  constexpr std::size_t kMost = 12;
  const std::vector<double> xs = XValues(series.Points()), ys = YValues(series.Points());
  const std::vector<double> y_errors = NumbersAlong(series.Points(), series.Errors().y_values),
                            x_errors = NumbersAlong(series.Points(), series.Errors().x_values);
  const auto sum = [](const std::vector<double>& all) {
    return GeneralText(std::accumulate(all.begin(), all.end(), 0.0), 12);
  };
  std::string text;
  for (std::size_t i = 0; i < xs.size() && xs.size() <= kMost; ++i) {
    text += ' ' + GeneralText(xs[i], 12) + ',' + GeneralText(ys[i], 12);
    for (const std::vector<double>* const errors : {&y_errors, &x_errors})
      if (!std::isnan((*errors)[i])) text += "+-" + GeneralText((*errors)[i], 12);
  }
  return xs.size() <= kMost
             ? text
             : ' ' + std::to_string(xs.size()) + " of sums " + sum(xs) + ',' + sum(ys);
}

}  // namespace

std::string DivisionText(const TDSInfo& source) {
  std::string text = "h" + std::to_string(source.FileHasHeaders);
  for (const char c : source.TextSeparators)
    text += c == '\t' ? "\\t" : c == '\n' ? "\\n" : c == ' ' ? "_" : std::string(1, c);
  if (!source.MergeSeparators) text += " apart";
  if (!source.ColumnCuts.empty()) text += " cuts " + source.ColumnCuts;
  if (source.NamesLine != 0) text += " names " + std::to_string(source.NamesLine);
  if (source.StackedNames) text += " stacked";
  if (source.UnitsLine != 0) text += " units " + std::to_string(source.UnitsLine);
  if (source.TableLines != 0) text += " lines " + std::to_string(source.TableLines);
  if (source.CommentMarks != "# %") text += " marks " + source.CommentMarks;
  if (!source.MissingValues.empty()) text += " none " + source.MissingValues;
  if (!source.TimeColumns.empty()) text += " time " + source.TimeColumns;
  return text;
}

std::string WholeOutcome(const ImportResult& result) {
  const auto format = [](ColumnFormat of) {
    return of == ColumnFormat::Automatic ? std::string()
                                         : " as " + std::to_string(static_cast<int>(of));
  };
  std::string text = "x " + result.x_name + (result.x_is_date ? " (time)" : "") +
                     (result.y_is_date ? ", y time" : "") + " | " +
                     DivisionText(result.series.front()->Source()) + '\n';
  std::vector<std::string> told = result.notes;
  if (!result.errors_note.empty()) told.push_back(result.errors_note);
  for (std::size_t i = 0; i < result.series.size(); ++i) {
    const TDataSeries& series = *result.series[i];
    const TDSInfo& source = series.Source();
    text += "y " + series.SeriesName() + " | " + source.XDataColumn + format(source.XFormat) +
            ", " + source.YDataColumn + format(source.YFormat);
    for (const std::string& error : {source.YErrorColumn, source.XErrorColumn})
      if (!error.empty()) text += " +- " + error;
    if (!source.GroupColumn.empty()) text += " of " + source.GroupColumn + source.GroupValue;
    if (source.Run != 0) text += " run " + std::to_string(source.Run);
    text += " |" + PointsText(series) + '\n';
    for (const std::string& report :
         {result.reports[i].RunsText(), result.reports[i].LeftOutText(),
          result.reports[i].SkippedText(), result.reports[i].ReplacedText(),
          result.reports[i].ErrorsText()})
      if (!report.empty() && std::ranges::find(told, report) == told.end()) told.push_back(report);
  }
  for (const std::string& clause : told) text += "! " + clause + '\n';
  return text;
}

}  // namespace tarnwick::testing
