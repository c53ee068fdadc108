#include "results/sample_report.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <span>

#include "analysis/histogram.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "graph/graph_update.h"
#include "graph/palette.h"
#include "graph/xy_graph.h"
#include "results/tools/tool.h"

namespace tarnwick {
namespace {

constexpr int kDigits = 4;
constexpr double kWhisker = 1.5;   // of the quartiles' distance
constexpr double kHalfBox = 0.12;  // of the distance of two boxes
constexpr double kBars = 0.55;     // the longest bar
constexpr std::size_t kMostOutliers = 2000;

std::string ChanceText(double probability) {
  if (probability < 1e-9) return "; chance alone hardly ever makes as much.";
  return "; chance alone makes as much in " + GeneralText(100 * probability, 3) + " % of cases.";
}

std::vector<SampleRow> RowsOf(const SampleComparison& c) {
  const auto row = [&](const char* name, double SampleFigures::*figure) {
    return SampleRow{name, c.first.*figure, c.second.*figure};
  };
  return {{"Values", static_cast<double>(c.first.count), static_cast<double>(c.second.count)},
          row("Mean", &SampleFigures::mean),
          row("Standard deviation", &SampleFigures::deviation),
          row("Least", &SampleFigures::least),
          row("Lower quartile", &SampleFigures::lower_quartile),
          row("Median", &SampleFigures::median),
          row("Upper quartile", &SampleFigures::upper_quartile),
          row("Greatest", &SampleFigures::greatest)};
}

std::vector<std::string> SentencesOf(const SampleComparison& c) {
  std::vector<std::string> sentences;
  sentences.push_back(
      IsUndefined(c.t_probability)
          ? "Welch's t test needs two values or more on either side that differ."
          : std::string("The mean of the second is ") + (c.difference < 0 ? "less" : "greater") +
                " by " + GeneralText(std::abs(c.difference), kDigits) + " ± " +
                GeneralText(c.difference_error, 2) + ": Welch's t = " + GeneralText(c.t, kDigits) +
                " with " + GeneralText(c.t_freedom, 3) + " degrees of freedom" +
                ChanceText(c.t_probability));
  sentences.push_back(IsUndefined(c.f_probability)
                          ? "The F test needs two values or more on either side that differ."
                          : "The variance of the second is " + GeneralText(c.f, kDigits) +
                                " times that of the first: F test, for normal scatter" +
                                ChanceText(c.f_probability));
  std::string shares = "The cumulated shares are " + GeneralText(c.distance, kDigits) +
                       " apart at most: Kolmogorov-Smirnov" + ChanceText(c.distance_probability);
  if (c.has_ties) AddSentence(shares, "Both have equal values, so the true chance is less.");
  sentences.push_back(shares);
  return sentences;
}

/// A line through these places in their order.
struct Outline {
  std::vector<double> x;
  std::vector<double> y;

  void To(double to_x, double to_y) {
    x.push_back(to_x);
    y.push_back(to_y);
  }
};

enum class DrawnAs { Line, Symbols };
enum class InLegend { No, Yes };

void AddDrawing(TxyGraph& graph, const std::string& name, const Outline& outline,
                std::size_t number, DrawnAs as, InLegend legend = InLegend::No) {
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName(name);
  series->SetDuplicatesAllowed(true);
  series->AddPoints(outline.x, outline.y);
  SeriesStyle style;
  style.connect_points = as == DrawnAs::Line;
  style.show_symbols = as == DrawnAs::Symbols;
  style.line_order = LineOrder::AsTheyCame;
  style.line_width = 2;
  style.show_in_legend = legend == InLegend::Yes ? 1 : 0;
  style.line_color = style.symbol_color = PaletteColor(number);
  series->SetStyle(style);
  graph.AddSeries(std::move(series));
}

/// From the lower whisker up round the box to the upper one.
Outline BoxOf(const SampleFigures& figures, double low, double high, double at) {
  Outline box;
  const double left = at - kHalfBox;
  const double right = at + kHalfBox;
  box.To(at, low);
  box.To(at, figures.lower_quartile);
  box.To(left, figures.lower_quartile);
  box.To(left, figures.median);
  box.To(right, figures.median);
  box.To(left, figures.median);
  box.To(left, figures.upper_quartile);
  box.To(at, figures.upper_quartile);
  box.To(at, high);
  box.To(at, figures.upper_quartile);
  box.To(right, figures.upper_quartile);
  box.To(right, figures.lower_quartile);
  box.To(at, figures.lower_quartile);
  return box;
}

void DrawBox(TxyGraph& graph, const std::string& name, std::span<const double> values,
             std::size_t number) {
  const SampleFigures figures = FiguresOf(values);
  const double reach = kWhisker * (figures.upper_quartile - figures.lower_quartile);
  const double at = static_cast<double>(number) + 1;
  double low = figures.lower_quartile;
  double high = figures.upper_quartile;
  Outline beyond;
  for (const double value : values) {
    const bool within =
        value >= figures.lower_quartile - reach && value <= figures.upper_quartile + reach;
    if (within) {
      low = std::min(low, value);
      high = std::max(high, value);
    } else if (beyond.x.size() < kMostOutliers) {
      beyond.To(at, value);
    }
  }
  AddDrawing(graph, name, BoxOf(figures, low, high, at), number, DrawnAs::Line, InLegend::Yes);
  beyond.To(at, figures.mean);
  AddDrawing(graph, name + ", mean and beyond", beyond, number, DrawnAs::Symbols);
}

/// Bars lie beside the box; `unit` is the longest bar's share of the values.
void DrawBars(TxyGraph& graph, const std::string& name, std::span<const double> shares,
              const Histogram& bins, double unit, std::size_t number) {
  const double ground = static_cast<double>(number) + 1 + 2 * kHalfBox;
  Outline bars;
  bars.To(ground, bins.first);
  for (std::size_t bin = 0; bin < shares.size(); ++bin) {
    const double length = ground + kBars * shares[bin] / unit;
    bars.To(length, bins.Edge(bin));
    bars.To(length, bins.Edge(bin + 1));
  }
  bars.To(ground, bins.Edge(shares.size()));
  AddDrawing(graph, name + ", histogram", bars, number, DrawnAs::Line);
}

std::vector<double> SharesOf(std::span<const double> values, const Histogram& bins) {
  std::vector<double> shares(bins.counts.size(), 0);
  for (const double value : values) {
    const double bin = std::floor((value - bins.first) / bins.width);
    const double last = static_cast<double>(shares.size() - 1);
    shares[static_cast<std::size_t>(std::clamp(bin, 0.0, last))] +=
        1 / static_cast<double>(values.size());
  }
  return shares;
}

}  // namespace

SampleReport CompareSeries(const TSeries& first, const TSeries& second) {
  const ToolColumns a = ColumnsOf(first);
  const ToolColumns b = ColumnsOf(second);
  SampleReport report;
  report.comparison = CompareSamples(a.y, b.y);
  report.rows = RowsOf(report.comparison);
  report.sentences = SentencesOf(report.comparison);
  if (&first == &second)
    report.sentences = {"Both are the same DataSet: there is nothing to compare it with."};
  if (const std::size_t left_out = a.left_out + b.left_out; left_out > 0) {
    report.sentences.push_back(Counted(static_cast<std::int64_t>(left_out), "point") +
                               " without a value left out.");
  }
  return report;
}

void DrawSamples(TxyGraph& graph, const TSeries& first, const TSeries& second) {
  const std::vector<double> values[] = {ColumnsOf(first).y, ColumnsOf(second).y};
  const std::string names[] = {first.SeriesName(), second.SeriesName()};
  std::vector<double> all = values[0];
  all.insert(all.end(), values[1].begin(), values[1].end());
  const Histogram bins = CountInBins(all);
  const GraphUpdate update(graph);
  double unit = 0;
  std::vector<double> shares[2];
  for (std::size_t i = 0; i < 2; ++i) {
    shares[i] = SharesOf(values[i], bins);
    unit = std::max(unit, *std::ranges::max_element(shares[i]));
  }
  for (std::size_t i = 0; i < 2; ++i) {
    DrawBox(graph, names[i], values[i], i);
    DrawBars(graph, names[i], shares[i], bins, unit, i);
  }
}

}  // namespace tarnwick
