#include "data/import/import_like.h"

#include <algorithm>

namespace tarnwick {
namespace {

void SayRows(const TDSInfo& source, ImportOptions& options) {
  options.headers = source.FileHasHeaders;
  options.names_line = source.NamesLine;
  options.stacked_names = source.StackedNames;
  options.units_line = source.UnitsLine;
  options.comment_marks = source.CommentMarks;
  options.missing = source.MissingValues;
  options.row_choice = source.RowChoiceMode;
  options.row_value1 = source.RowChoiceValue1;
  options.row_value2 = source.RowChoiceValue2;
  if (source.AllRows) return;
  options.automatic_sampling = source.AutoRowHitFreq;
  if (!source.AutoRowHitFreq) options.every = source.RowSamplingFrequency;
}

void SayColumns(const TDSInfo& source, ImportOptions& options) {
  options.separators = source.TextSeparators;
  options.markers = source.TextMarkers;
  options.merge_separators = source.MergeSeparators;
  if (source.DivideTextByWidth) options.width = source.ColumnWidth;
  options.cuts = source.ColumnCuts;
  options.x_column = source.XDataColumn;
  options.x_format = source.XFormat;
  options.x_expression = source.XColExpr;
  options.y_expression = source.YColExpr;
}

}  // namespace

ImportOptions OptionsLike(std::span<const TDataSeries* const> series) {
  ImportOptions options;
  const auto is_text = [](const TDataSeries* one) {
    return one->Source().DataSource == DataSourceKind::Text;
  };
  const auto first = std::ranges::find_if(series, is_text);
  if (first == series.end()) return options;
  const TDSInfo& source = (*first)->Source();
  SayRows(source, options);
  SayColumns(source, options);
  options.tolerance = (*first)->NumericalTolerance();
  options.duplicates_allowed = (*first)->DuplicatesAllowed();
  options.y_format = source.YFormat;
  for (const TDataSeries* const one : series) {
    const TDSInfo& other = one->Source();
    if (!is_text(one) || other.DatasourceInfo != source.DatasourceInfo) continue;
    if (std::ranges::find(options.y_columns, other.YDataColumn) != options.y_columns.end())
      continue;
    options.y_columns.push_back(other.YDataColumn);
    if (other.YFormat != source.YFormat) options.y_format.reset();  // as each column is guessed
  }
  return options;
}

}  // namespace tarnwick
