// Draws a graph as its layout says. Knows painter, graph and layout; computes nothing that takes time, asks nothing.
#pragma once

class QPainter;

namespace tarnwick {

class TxyGraph;
struct PlotLayout;

enum class PaintTarget {
  Screen,  ///< raster: lines on whole device pixels
  Vector,  ///< PDF, SVG
  Paper,   ///< printer: margins are filled only when the graph prints with its background
};

/// Draws the whole picture with the painter's present transformation; its state is restored. Order: margin and plot
/// background, grid, DataSets in list order, marks in ID order, axes with ticks, labels and titles, cross at zero, graph
/// title, legend, child graphs.
void PaintPlot(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
               PaintTarget target = PaintTarget::Screen);

}  // namespace tarnwick
