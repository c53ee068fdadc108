#include "editors/data/pasted_points.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "data/pseudo_columns.h"
#include "data/series/point_errors.h"
#include "desk/document/document_io.h"
#include "graph/edit/point_edit.h"
#include "graph/series.h"

namespace tarnwick {
namespace {

constexpr const char* kClipboard = "clipboard";

struct Columns {
  std::vector<double> x = {};  // empty: Y alone
  std::vector<double> y = {};
  std::vector<double> x_error = {};  // empty: none in the text
  std::vector<double> y_error = {};
  std::size_t unused = 0;
  bool cancelled = false;
};

Columns ColumnsOf(const std::string& text, Progress& progress) {
  if (const std::optional<double> alone = ParseNumber(text)) return {{}, {*alone}};
  const ReadResult read = ReadDataText({}, text, kClipboard, progress);
  if (read.cancelled) return {.cancelled = true};
  if (read.state.series.empty()) throw Error("The clipboard holds no columns of numbers.");
  const DataState& data = read.state.series.front().data;
  std::vector<Point> points;
  points.reserve(data.points.Size());
  data.points.ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size(); ++i) points.push_back(view.chunk->At(i));
  });
  // As they stand in the text: of two with one X the later may have to win.
  std::ranges::sort(points, {}, &Point::id);
  Columns columns;
  columns.unused = read.state.series.size() - 1;
  const bool has_x = data.settings.source.XDataColumn != kRowNumberName;
  for (const Point& point : points) {
    if (has_x) columns.x.push_back(point.x);
    columns.y.push_back(point.y);
    if (HasXErrors(data.errors)) columns.x_error.push_back(XErrorOf(data.errors, point));
    if (HasYErrors(data.errors)) columns.y_error.push_back(YErrorOf(data.errors, point));
  }
  return columns;
}

/// Points that bring errors show them where no rule gives some.
void ShowErrors(const Columns& columns, TSeries& series) {
  PointErrors errors = series.Errors();
  if (!columns.y_error.empty() && !HasYErrors(errors)) errors.y.kind = ErrorKind::Column;
  if (!columns.x_error.empty() && !HasXErrors(errors)) errors.x.kind = ErrorKind::Column;
  if (errors != series.Errors()) series.SetErrors(std::move(errors));
}

}  // namespace

PastedPoints PasteInto(const DataState& into, std::size_t first, const std::string& text,
                       Progress& progress) {
  const Columns columns = ColumnsOf(text, progress);
  PastedPoints pasted;
  pasted.cancelled = columns.cancelled || progress.Cancelled();
  if (pasted.cancelled) return pasted;
  TSeries series;
  series.SetState(into);
  if (columns.x.empty()) {
    pasted.taken = OverwriteY(series, first, columns.y);
  } else {
    ShowErrors(columns, series);
    series.AddPoints(columns.x, columns.y, {columns.y_error, columns.x_error});
    pasted.taken = columns.y.size();
  }
  pasted.left_over = columns.y.size() - pasted.taken;
  pasted.columns_unused = columns.unused;
  pasted.state = series.State();
  return pasted;
}

}  // namespace tarnwick
