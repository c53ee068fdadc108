#include "graph/layout/second_quantity.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/word_list.h"
#include "graph/all_series.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// A quantity whose values take less than this share of the common axis looks flat.
constexpr double kFlatShare = 0.04;

/// Likewise of a DataSet among others whose names tell no quantity.
constexpr double kUnseenShare = 0.02;

/// Of more flat DataSets the first are named.
constexpr std::size_t kNamed = 3;

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
  for (const TSeries& series : AllSeries(graph)) {
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

void DrawAgainstSecondAxis(TxyGraph& graph, const std::vector<std::size_t>& which) {
  graph.BeginUpdate();
  for (const std::size_t place : which) {
    SeriesStyle style = graph.Series(place).Style();
    style.first_axis = false;
    graph.Series(place).SetStyle(style);
  }
  graph.EndUpdate();
}

/// The DataSets of the second of two units; empty where units do not tell quantities apart, or none looks flat.
std::vector<std::size_t> OfSecondUnit(const TxyGraph& graph) {
  const std::vector<Quantity> quantities = TwoQuantities(graph);
  if (quantities.empty()) return {};
  const double from = std::min(quantities[0].min, quantities[1].min);
  const double to = std::max(quantities[0].max, quantities[1].max);
  if (!LooksFlat(quantities[0], from, to) && !LooksFlat(quantities[1], from, to)) return {};
  std::vector<std::size_t> second;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (UnitOf(graph.Series(i).SeriesName()) == quantities[1].unit) second.push_back(i);
  }
  return second;
}

/// A DataSet, or the runs of one column, by the range of its Y.
struct Sized {
  std::vector<std::size_t> places;  // in the graph, rising
  double min = 0;
  double max = 0;
  double Span() const { return max - min; }
  std::size_t First() const { return places.front(); }
};

bool ByPlace(const Sized& one, const Sized& other) {
  return one.First() < other.First();
}

/// Those drawn against one axis, in order of their first places. Runs of one column are one quantity.
std::vector<Sized> SizesOn(const TxyGraph& graph, AxisId axis) {
  std::vector<Sized> all;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    if (YAxisOf(series) != axis || IsInPanel(series)) continue;
    const Extremes extremes = series.GetExtremes();
    const bool bounded = std::isfinite(extremes.y_min) && std::isfinite(extremes.y_max);
    if (series.PointCount() == 0 || !bounded) continue;
    const auto same = std::ranges::find_if(
        all, [&](const Sized& one) { return AreOfOneColumn(graph.Series(one.First()), series); });
    if (same == all.end()) {
      all.push_back({{i}, extremes.y_min, extremes.y_max});
    } else {
      same->places.push_back(i);
      same->min = std::min(same->min, extremes.y_min);
      same->max = std::max(same->max, extremes.y_max);
    }
  }
  return all;
}

/// By span, smallest first; empty when some DataSet is drawn against the second axis already.
std::vector<Sized> BySpan(const TxyGraph& graph) {
  const auto is_elsewhere = [](const TSeries& series) { return YAxisOf(series) != AxisId::Y; };
  if (std::ranges::any_of(AllSeries(graph), is_elsewhere)) return {};
  std::vector<Sized> all = SizesOn(graph, AxisId::Y);
  std::ranges::stable_sort(all, {}, &Sized::Span);
  return all;
}

/// Those of them that would be seen as lines without a shape on an axis of their own. A constant has none to lose.
std::vector<Sized> UnseenOf(std::span<const Sized> group) {
  if (group.empty()) return {};
  const double from = std::ranges::min(group, {}, &Sized::min).min;
  const double to = std::ranges::max(group, {}, &Sized::max).max;
  std::vector<Sized> unseen;
  std::ranges::copy_if(group, std::back_inserter(unseen), [&](const Sized& one) {
    return one.Span() > 0 && one.Span() < kUnseenShare * (to - from);
  });
  return unseen;
}

std::size_t Unseen(std::span<const Sized> group) {
  return UnseenOf(group).size();
}

/// The DataSets that two axes show best apart from the first: those of other size; empty where one axis shows as much.
std::vector<std::size_t> OfSecondSize(const TxyGraph& graph) {
  const std::vector<Sized> all = BySpan(graph);
  if (all.size() < 2) return {};
  std::size_t fewest = Unseen(all);
  std::size_t best = 0;
  for (std::size_t split = 1; split < all.size() && fewest > 0; ++split) {
    const std::span<const Sized> sorted(all);
    const std::size_t unseen = Unseen(sorted.first(split)) + Unseen(sorted.subspan(split));
    if (unseen >= fewest) continue;
    fewest = unseen;
    best = split;
  }
  if (best == 0) return {};
  const auto middle = all.begin() + static_cast<std::ptrdiff_t>(best);
  const bool small_first = std::min_element(all.begin(), middle, ByPlace)->First() <
                           std::min_element(middle, all.end(), ByPlace)->First();
  std::vector<std::size_t> second;
  for (const Sized& one :
       small_first ? std::span(middle, all.end()) : std::span(all.begin(), middle))
    second.insert(second.end(), one.places.begin(), one.places.end());
  return second;
}

}  // namespace

bool AreOfOneColumn(const TSeries& one, const TSeries& other) {
  const TDSInfo& a = one.Source();
  const TDSInfo& b = other.Source();
  return !a.DatasourceInfo.empty() && a.DatasourceInfo == b.DatasourceInfo &&
         a.TablePart == b.TablePart && a.YDataColumn == b.YDataColumn &&
         a.y_column_index == b.y_column_index;
}

std::string FlatLinesText(const TxyGraph& graph) {
  std::vector<std::string> names;
  for (const AxisId axis : {AxisId::Y, AxisId::Y2}) {
    const std::vector<Sized> sizes = SizesOn(graph, axis);
    for (const Sized& one : UnseenOf(sizes))
      names.push_back('"' + graph.Series(one.First()).SeriesName() + '"');
  }
  if (names.empty()) return {};
  const bool one = names.size() == 1;
  return Listed(names, kNamed) +
         (one ? " looks flat: its values take" : " look flat: their values take") +
         " less than a fiftieth of the axis";
}

void SeparateQuantities(TxyGraph& graph) {
  std::vector<std::size_t> second = OfSecondUnit(graph);
  if (second.empty()) second = OfSecondSize(graph);
  if (!second.empty()) DrawAgainstSecondAxis(graph, second);
}

}  // namespace tarnwick
