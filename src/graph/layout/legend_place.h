// Where the legend of a graph stands that nobody has arranged yet. Knows layouts, points and names; changes the legend's place
// and the margins that make room for it, never what is in it.
#pragma once

#include <QSizeF>

namespace tarnwick {

class TextMetrics;
class TxyGraph;

/// Puts the legend, of entries below each other, where it covers least: into the corner of the plot that hides no point; else
/// beside the plot, side by side above it, or beside it with names cut to what tells them apart, whichever comes first that
/// leaves the plot enough of a picture of `size`; else into the corner that hides least, and where that hides many points it is
/// not shown. A hidden legend gets its corner.
void PlaceLegend(TxyGraph& graph, QSizeF size, const TextMetrics& metrics);

/// True where the legend is shown and lies over points, their errors, lines, labels within the plot or inserted graphs.
bool LegendHides(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics);

}  // namespace tarnwick
