// Where everything of a graph is at one size: plot rectangle, axis lines, ticks, labels, titles, legend, marks, children.
// Knows the graph and text sizes; draws nothing. Painting and picking go by it alone.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include <QImage>
#include <QLineF>
#include <QPolygonF>
#include <QRectF>
#include <QSizeF>

#include "graph/axes/axis.h"
#include "graph/axes/axis_scale.h"
#include "graph/axes/plot_metrics.h"
#include "graph/mark.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// A text at its place. `size` is that of the unturned text, `center` the middle of text and box alike.
struct PlacedText {
  RichText text;
  Font font;
  QPointF center;
  QSizeF size;
  double angle = 0;  ///< degrees counter-clockwise: 0, 45 or 90
  QPolygonF Outline() const;
  /// The outline without the strips above and below the letters, which may overlap a neighbour's.
  QPolygonF Ink() const;
  QRectF Box() const { return Outline().boundingRect(); }
};

/// An image at its place; only the part `source` of it, in its own pixels, is seen.
struct PlacedImage {
  QImage image;
  QRectF target;
  QRectF source;
};

struct AxisTick {
  QLineF line;
  bool major = true;
};

struct AxisLayout {
  bool shown = false;
  AxisScale scale;
  QLineF line;
  std::vector<AxisTick> ticks;
  std::vector<QLineF> grid;
  std::vector<PlacedText> labels;
  double labels_side = 1;  ///< +1: labels below or right of the line, -1: above or left
  RichText common;         ///< what all labels leave out: a power of ten, an offset, a date
  std::optional<PlacedText> factor;  ///< that text at its place
  std::optional<PlacedText> title;
};

/// What a legend's row stands for: a DataSet, or the curve of its model.
enum class LegendEntry { DataSet, ModelCurve };

struct LegendRow {
  LegendEntry entry = LegendEntry::DataSet;
  std::size_t series = 0;  ///< index in the graph
  QRectF sample;           ///< of line and symbol
  PlacedText name;
};

struct LegendBox {
  QRectF frame;
  std::vector<LegendRow> rows;
  std::optional<PlacedText> more;  ///< "+3 more" when not all rows fit
};

struct MarkItem {
  Mark mark;
  QLineF line;  ///< vertical, horizontal, line and arrow marks; a rectangle's diagonal
  QRectF box;   ///< of a rectangle, as far as it can be seen
  std::vector<QLineF> lines;  ///< that it is drawn by, an arrow's without its head
  QPointF point;              ///< point and text marks
  double radius = 0;          ///< of a point mark
  std::optional<PlacedText> caption;
};

/// The head of an arrow whose tip is seen: tip and both ends behind it; else empty.
QPolygonF HeadOf(const MarkItem& item, const QRectF& plot);

struct ChildFrame;

/// The panel under the plot, as wide as that. Its X axis is the plot's; where that would stand at the plot's lower end it stands
/// at the panel's.
struct PanelLayout {
  QRectF plot;
  AxisLayout y;
  std::optional<QLineF> zero;
  std::optional<QLineF> plot_edge;  ///< where the X axis would have stood
};

struct PlotLayout {
  QSizeF size;
  QRectF plot;  ///< by the stored margins, and above the panel; empty when they leave no room
  std::optional<PanelLayout> panel;
  std::optional<PlacedImage> background;
  bool has_scales = false;            ///< false: there is nothing to draw against, only the message
  std::optional<PlacedText> message;  ///< shown instead of axes and DataSets
  std::array<AxisLayout, 3> axes;     ///< X, Y, Y2
  std::optional<PlacedText> title;
  std::optional<QPointF> cross;  ///< centre of the cross at zero
  std::optional<LegendBox> legend;
  std::vector<MarkItem> marks;
  std::vector<ChildFrame> children;

  const AxisLayout& Axis(AxisId id) const { return axes[static_cast<std::size_t>(id)]; }
  /// The shown ones, the panel's among them.
  std::vector<const AxisLayout*> ShownAxes() const;
  /// Where a DataSet is drawn: the panel or the plot, and its scale there.
  const QRectF& PlotOf(const TSeries& series) const;
  const AxisScale& YScaleOf(const TSeries& series) const;
};

/// An inserted graph: its frame in the parent's pixels and its own layout, whose origin is the frame's corner.
struct ChildFrame {
  std::size_t child = 0;
  QRectF frame;
  PlotLayout layout;
};

/// Lays the graph out at `size` (logical pixels, 1/96 inch). The graph's scales must be up to date (UpdateScales); its own
/// client size is not used. Labels never overlap each other nor leave the picture. Any size is allowed.
PlotLayout LayoutPlot(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics);

/// The value <-> pixel map of one axis at one size, by the stored margins.
AxisScale ScaleAt(const TxyGraph& graph, AxisId axis, QSizeF size);

}  // namespace tarnwick
