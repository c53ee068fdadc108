// The steps of LayoutPlot: axes, grid, titles, legend, marks, each in a file of its own. For the layout's own files only.
#pragma once

#include <vector>

#include "graph/layout/plot_layout.h"

namespace tarnwick {

/// The picture while it fills: which places are taken by texts.
class TextRoom {
 public:
  explicit TextRoom(QSizeF picture) : picture_(QPointF(0, 0), picture) {}

  const QRectF& Picture() const { return picture_; }
  bool IsInside(const PlacedText& text) const;
  /// Inside the picture and clear of every text placed before.
  bool IsFree(const PlacedText& text) const;
  /// Clear of every text placed before.
  bool IsFree(const QRectF& box) const;
  void Take(const PlacedText& text) { taken_.push_back(text.Ink()); }
  void Take(const QRectF& box) { taken_.push_back(QPolygonF(box)); }
  /// Takes the place when it is free.
  bool TryTake(const PlacedText& text);

 private:
  QRectF picture_;
  std::vector<QPolygonF> taken_;
};

/// What every step needs.
struct LayoutContext {
  const TxyGraph& graph;
  const TextMetrics& metrics;
  TextRoom& room;
};

PlacedText MakeText(const RichText& text, const Font& font, const TextMetrics& metrics);

/// True when the two convex outlines share an area.
bool Overlap(const QPolygonF& left, const QPolygonF& right);

/// Axis line, ticks, grid and labels of one axis; `layout.plot` and all scales stand.
void LayoutAxis(const LayoutContext& context, AxisId id, PlotLayout& layout);
/// Axis, ticks, grid and labels of the panel under the plot; `layout.panel` stands but for them.
void LayoutPanelAxis(const LayoutContext& context, PlotLayout& layout);
/// Cuts the grid lines of all axes where they would strike through labels, such as those of an axis within the plot.
void KeepGridOffLabels(PlotLayout& layout);
/// Titles of graph and axes and the factors of their labels, where labels leave room.
void LayoutTitles(const LayoutContext& context, PlotLayout& layout);
void LayoutLegend(const LayoutContext& context, PlotLayout& layout);
void LayoutMarks(const LayoutContext& context, PlotLayout& layout);

}  // namespace tarnwick
