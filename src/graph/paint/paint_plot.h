// Draws a graph as its layout says. Knows painter, graph and layout; computes nothing that takes time, asks nothing.
#pragma once

#include <cstddef>
#include <cstdint>

class QPainter;

namespace tarnwick {

class TxyGraph;
enum class LineStyle : std::int32_t;
struct Appearance;
struct PlotLayout;

enum class PaintTarget {
  Screen,    ///< raster: lines on whole device pixels
  Vector,    ///< PDF, SVG
  Metafile,  ///< for documents: the background as on the screen, the styles of lines as on paper
  Paper,     ///< printer: margins are filled only when the graph prints with its background
};

/// How the connecting line of the DataSet at `series` is drawn when its own style is solid. Without colours lines are told
/// apart by
/// their styles: where the appearance prints so, each DataSet has the next style, on paper and in metafiles.
LineStyle SolidLineStyle(const Appearance& appearance, std::size_t series, PaintTarget target);

/// Draws the whole picture with the painter's present transformation; its state is restored. Order: margin and plot
/// background, grid, DataSets in list order, marks in ID order, axes with ticks, labels and titles, cross at zero, graph
/// title, legend, child graphs.
void PaintPlot(QPainter& painter, const TxyGraph& graph, const PlotLayout& layout,
               PaintTarget target = PaintTarget::Screen);

}  // namespace tarnwick
