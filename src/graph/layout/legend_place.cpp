#include "graph/layout/legend_place.h"

#include <QPointF>
#include <QRectF>
#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <vector>

#include "graph/axes/plot_metrics.h"
#include "graph/layout/plot_layout.h"
#include "graph/layout/quiet_corner.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr int kEdge = 8;    // pixels between legend, title and the picture's edges
constexpr int kInset = 10;  // of the legend from the plot's edges

/// A legend beside the plot takes at most this share of the picture's width, or the wide one where it would cover much.
constexpr double kLargestShare = 0.25;
constexpr double kWideShare = 1.0 / 3;
constexpr double kMuchCovered = 0.03;  // of the points
constexpr double kNarrowestWide = 110;
constexpr double kNarrowest = 70;  // where names are cut to a few letters
/// Above the plot it takes at most this share of the plot's height, or a small one where it has more rows than are read across.
constexpr double kLargestShareAbove = 1.0 / 3;
constexpr double kSmallShareAbove = 1.0 / 6;
constexpr std::size_t kMostRowsAcross = 4;

int RoundedUp(double pixels) {
  return static_cast<int>(std::ceil(pixels));
}

/// Whether the legend names all, uncut, in little of a plot of this height.
bool IsWholeAndLow(const LegendBox& box, double plot_height) {
  std::set<double> tops;
  for (const LegendRow& row : box.rows) {
    if (row.name.text.text.contains(u'\u2026')) return false;
    tops.insert(row.sample.top());
  }
  const double share = tops.size() <= kMostRowsAcross ? kLargestShareAbove : kSmallShareAbove;
  return !box.more && box.frame.height() <= share * plot_height;
}

std::size_t CountIn(const QRectF& frame, const std::vector<QPointF>& pixels) {
  return static_cast<std::size_t>(std::count_if(
      pixels.begin(), pixels.end(), [&](const QPointF& pixel) { return frame.contains(pixel); }));
}

/// What a legend with this frame keeps clear of.
QRectF WithClearance(const QRectF& frame) {
  constexpr double kClearance = 3;
  return frame.adjusted(-kClearance, -kClearance, kClearance, kClearance);
}

/// Of the plot's corners the one in which a legend covers least.
struct CornerPlace {
  bool right = true;
  bool bottom = false;
  bool covers = false;  ///< points, or inserted graphs
  bool much = false;
};

class LegendPlacer {
 public:
  LegendPlacer(TxyGraph& graph, QSizeF size, const TextMetrics& metrics)
      : graph_(graph), size_(size), metrics_(metrics), layout_(LayoutPlot(graph, size, metrics)) {}

  /// False where it is to be shown and would hide many points wherever it stood.
  bool Place(bool shown) const;

 private:
  template <class Change>
  void Alter(Change change) const {
    Legend legend = graph_.GetLegend();
    change(legend);
    graph_.SetLegend(legend);
  }
  double Width() const { return layout_.legend->frame.width(); }
  CornerPlace QuietestCorner() const;
  void PlaceInCorner(const CornerPlace& corner) const;
  void PlaceBeside(double width) const;
  bool PlaceAbove() const;
  bool PlaceOutside(const CornerPlace& corner) const;

  TxyGraph& graph_;
  QSizeF size_;
  const TextMetrics& metrics_;
  PlotLayout layout_;  ///< with the legend as it stands at first
};

CornerPlace LegendPlacer::QuietestCorner() const {
  const QSizeF box = layout_.legend->frame.size();
  const QRectF& plot = layout_.plot;
  const std::vector<QPointF> pixels = SampledPixels(graph_, layout_);
  constexpr std::array<CornerPlace, 4> kCorners = {
      {{true, false}, {false, false}, {false, true}, {true, true}}};
  std::array<QRectF, kCorners.size()> frames;
  std::transform(kCorners.begin(), kCorners.end(), frames.begin(), [&](const CornerPlace& corner) {
    const QPointF at(corner.right ? plot.right() - kInset - box.width() : plot.left() + kInset,
                     corner.bottom ? plot.bottom() - kInset - box.height() : plot.top() + kInset);
    return WithClearance(QRectF(at, box));
  });
  const auto points_in = [&pixels](const QRectF& frame) { return CountIn(frame, pixels); };
  const QuietPlace place = FindQuietPlace(frames, {BoxesToRead(layout_), points_in});
  CornerPlace best = kCorners.at(place.index);
  const std::size_t covered = place.hidden.points + (place.hidden.boxes > 0 ? pixels.size() : 0);
  best.covers = covered > 0;
  best.much = static_cast<double>(covered) > kMuchCovered * static_cast<double>(pixels.size());
  return best;
}

void LegendPlacer::PlaceInCorner(const CornerPlace& corner) const {
  const QRectF& plot = layout_.plot;
  const auto inset = [](double edge) {
    return static_cast<std::int32_t>(std::lround(edge)) + kInset;
  };
  Alter([&](Legend& legend) {
    legend.left = corner.right ? -inset(size_.width() - plot.right()) : inset(plot.left());
    legend.top = corner.bottom ? -inset(size_.height() - plot.bottom()) : inset(plot.top());
  });
}

/// The plot's right margin makes room for it.
void LegendPlacer::PlaceBeside(double width) const {
  Dimensions dimensions = graph_.GetDimensions();
  dimensions.right_margin += RoundedUp(width) + kEdge;
  graph_.SetDimensions(dimensions);
  Alter([&](Legend& legend) {
    legend.left = -kEdge;
    legend.top = RoundedUp(layout_.plot.top());
  });
}

/// Between the graph's title and the plot, with every name whole; changes nothing where that would leave the plot too little.
bool LegendPlacer::PlaceAbove() const {
  const Legend before = graph_.GetLegend();
  const int top = layout_.title ? RoundedUp(layout_.title->Box().bottom()) + kEdge / 2 : kEdge;
  Alter([&](Legend& legend) {
    legend.layout_mode = LegendLayout::Horizontal;
    legend.width = 0;
    legend.left = RoundedUp(layout_.plot.left());
    legend.top = top;
  });
  const auto box = LayoutPlot(graph_, size_, metrics_).legend;
  if (!box || !IsWholeAndLow(*box, layout_.plot.height())) {
    graph_.SetLegend(before);
    return false;
  }
  Dimensions dimensions = graph_.GetDimensions();
  const int taken = RoundedUp(box->frame.height()) + kEdge / 2;
  dimensions.top_margin += taken;
  dimensions.graph_title_offset += taken;
  graph_.SetDimensions(dimensions);
  return true;
}

bool LegendPlacer::PlaceOutside(const CornerPlace& corner) const {
  const double narrow = kLargestShare * size_.width();
  const double wide = kWideShare * size_.width();
  if (Width() < narrow) {
    PlaceBeside(Width());
    return true;
  }
  if (PlaceAbove()) return true;
  const bool crowded = corner.much || layout_.legend->more;
  if (crowded && wide >= kNarrowestWide) {
    PlaceBeside(std::min(Width(), wide));
    return true;
  }
  if (!crowded || narrow < kNarrowest) return false;
  PlaceBeside(narrow);
  return true;
}

bool LegendPlacer::Place(bool shown) const {
  if (!layout_.legend) return true;
  const CornerPlace corner = QuietestCorner();
  if (shown && corner.covers && PlaceOutside(corner)) return true;
  PlaceInCorner(corner);
  return !shown || !corner.much;
}

}  // namespace

bool LegendHides(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  const PlotLayout layout = LayoutPlot(graph, size, metrics);
  if (!layout.legend) return false;
  const QRectF frame = WithClearance(layout.legend->frame);
  const std::array places = {frame};
  const auto points_in = [&](const QRectF&) {
    return CountIn(frame, SampledPixels(graph, layout));
  };
  const HiddenContents hidden = FindQuietPlace(places, {BoxesToRead(layout), points_in}).hidden;
  return hidden.boxes > 0 || hidden.points > 0;
}

void PlaceLegend(TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  const auto show = [&graph](bool visible) {
    Legend legend = graph.GetLegend();
    legend.visible = visible;
    graph.SetLegend(legend);
  };
  const bool visible = graph.GetLegend().visible;
  show(true);
  const bool has_room = LegendPlacer(graph, size, metrics).Place(visible);
  show(visible && has_room);
}

}  // namespace tarnwick
