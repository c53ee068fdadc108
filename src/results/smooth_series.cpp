#include "results/smooth_series.h"

#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/peak_figures.h"
#include "base/error.h"
#include "base/number_text.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

struct Columns {
  std::vector<double> x;
  std::vector<double> y;
  std::size_t left_out = 0;
};

Columns ColumnsOf(const TSeries& source) {
  Columns columns;
  const BaseLine line = source.GetBaseLine();
  source.Points().ForEachPoint([&](double x, double y) {
    const double above = line.CorrectedY(x, y);
    if (!std::isfinite(x) || !std::isfinite(above)) {
      ++columns.left_out;
      return;
    }
    columns.x.push_back(x);
    columns.y.push_back(above);
  });
  if (columns.x.empty()) throw Error("No Data Found in DataSet " + source.SeriesName() + "!");
  return columns;
}

/// How a DataSet was made: kept with it as what its points come from.
struct Made {
  std::string y_column;
  std::string how;
};

MadeSeries Add(TxyGraph& graph, const TSeries& source, const Columns& columns, const Made& made,
               std::string told, const NewSeries& wanted) {
  auto series = std::make_unique<TSeries>();
  series->SetDuplicatesAllowed(source.DuplicatesAllowed());
  series->Source().XDataColumn = source.Source().XDataColumn;
  series->Source().YDataColumn = made.y_column;
  series->Source().DatasourceInfo = made.how + ", of \"" + source.SeriesName() + "\"";
  series->AddPoints(columns.x, columns.y);
  const auto tell = [&told](const std::string& text) { told += (told.empty() ? "" : " ") + text; };
  if (columns.left_out > 0) {
    tell(Counted(static_cast<std::int64_t>(columns.left_out), "point") +
         " without a value left out.");
  }
  if (HasYErrors(source.Errors()) || HasXErrors(source.Errors())) tell("Errors are left out.");
  return {AddNewSeries(graph, std::move(series), source, wanted), std::move(told)};
}

constexpr double kEvenEnough = 0.01;  // share of a step that a base line does not feel
const char* const kDerivatives[] = {"", "DIF of ", "second DIF of "};

}  // namespace

std::string SmoothName(const TxyGraph& graph, const TSeries& source) {
  return FreeSeriesName(graph, source.SeriesName() + "_SMO");
}

std::string BaseLineName(const TxyGraph& graph, const TSeries& source) {
  return FreeSeriesName(graph, source.SeriesName() + "_BLC");
}

MadeSeries AddSmooth(TxyGraph& graph, const TSeries& source, const SmoothOptions& options,
                     const NewSeries& wanted) {
  Columns columns = ColumnsOf(source);
  const LocalPolynomial& local = options.local;
  const std::string points = Counted(local.window, "point");
  const std::string& column = source.Source().YDataColumn;
  if (options.method == SmoothMethod::Median) {
    columns.y = RunningMedian(columns.y, local.window);
    return Add(graph, source, columns, {column, "Running median, " + points}, {}, wanted);
  }
  const double noise = NoiseOf({columns.x, columns.y});
  Smoothed smooth = SmoothByPolynomials(columns.x, columns.y, local);
  columns.y = std::move(smooth.y);
  const Made made = {kDerivatives[local.derivative] + column,
                     "Savitzky-Golay, " + points + ", order " + std::to_string(local.order)};
  const std::string left = GeneralText(noise * smooth.noise_gain, 3);
  std::string told =
      "The noise of Y, " + GeneralText(noise, 3) + " as neighbouring points scatter, ";
  told += local.derivative > 0 ? "makes one of " + left + " in the derivative."
                               : "is reduced to " + left + ".";
  return Add(graph, source, columns, made, std::move(told), wanted);
}

MadeSeries AddLessBaseLine(TxyGraph& graph, const TSeries& source, const BaseLineOptions& options,
                           const NewSeries& wanted) {
  Columns columns = ColumnsOf(source);
  if (!(options.asymmetric.smoothness > 0)) throw Error("The smoothness is a number above 0.");
  const bool band = options.method == BaseLineMethod::RubberBand;
  const std::vector<double> line =
      band ? RubberBand(columns.x, columns.y) : AsymmetricBaseLine(columns.y, options.asymmetric);
  const std::string method =
      band ? "Rubber band" : "arPLS, smoothness " + GeneralText(options.asymmetric.smoothness, 6);
  const std::string& column = source.Source().YDataColumn;
  std::string told;
  if (!band && columns.x.size() > 2 && !IsEvenlySpaced(columns.x, kEvenEnough)) {
    told = "X is not evenly spaced; the base line takes the points as if it were.";
  }
  if (options.result == BaseLineResult::Line) {
    columns.y = line;
    return Add(graph, source, columns, {column, "Base line, " + method}, told, wanted);
  }
  for (std::size_t i = 0; i < line.size(); ++i) columns.y[i] -= line[i];
  return Add(graph, source, columns, {column, "Less base line, " + method}, told, wanted);
}

}  // namespace tarnwick
