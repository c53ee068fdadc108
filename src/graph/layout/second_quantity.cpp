#include "graph/layout/second_quantity.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// A quantity whose values take less than this share of the common axis looks flat.
constexpr double kFlatShare = 0.04;

constexpr std::string_view kBlanks = " \t";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Empty when the name ends in no unit.
std::string_view UnitOf(std::string_view name) {
  name = Trimmed(name);
  if (name.empty()) return {};
  const char closing = name.back();
  if (closing == ')' || closing == ']') {
    const std::size_t opening = name.rfind(closing == ')' ? '(' : '[');
    if (opening == std::string_view::npos) return {};
    return Trimmed(name.substr(opening + 1, name.size() - opening - 2));
  }
  const std::size_t stroke = name.find('/');
  return stroke == std::string_view::npos ? std::string_view() : Trimmed(name.substr(stroke + 1));
}

struct Quantity {
  std::string_view unit;
  double min = std::numeric_limits<double>::infinity();
  double max = -std::numeric_limits<double>::infinity();

  void Take(const TSeries& series) {
    const Extremes extremes = series.GetExtremes();
    if (!std::isfinite(extremes.y_min) || !std::isfinite(extremes.y_max)) return;
    min = std::min(min, extremes.y_min);
    max = std::max(max, extremes.y_max);
  }
};

bool LooksFlat(const Quantity& one, double from, double to) {
  return one.max - one.min < kFlatShare * (to - from);
}

/// Of the graph's DataSets, when each is of one of two quantities; else empty.
std::vector<Quantity> TwoQuantities(const TxyGraph& graph) {
  std::vector<Quantity> quantities;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    const std::string_view unit = UnitOf(series.SeriesName());
    if (unit.empty() || YAxisOf(series) != AxisId::Y) return {};
    auto same = std::find_if(quantities.begin(), quantities.end(),
                             [&](const Quantity& one) { return one.unit == unit; });
    if (same == quantities.end()) {
      if (quantities.size() == 2) return {};
      same = quantities.insert(same, Quantity{unit});
    }
    same->Take(series);
  }
  if (quantities.size() != 2) quantities.clear();
  return quantities;
}

}  // namespace

void SeparateQuantities(TxyGraph& graph) {
  const std::vector<Quantity> quantities = TwoQuantities(graph);
  if (quantities.empty()) return;
  const double from = std::min(quantities[0].min, quantities[1].min);
  const double to = std::max(quantities[0].max, quantities[1].max);
  if (!LooksFlat(quantities[0], from, to) && !LooksFlat(quantities[1], from, to)) return;
  const std::string second(quantities[1].unit);
  graph.BeginUpdate();
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    TSeries& series = graph.Series(i);
    if (UnitOf(series.SeriesName()) != second) continue;
    SeriesStyle style = series.Style();
    style.first_axis = false;
    series.SetStyle(style);
  }
  graph.EndUpdate();
}

}  // namespace tarnwick
