// The legend whose place the program looks for, anew in every size of the picture. Knows what it took of the margins; changes
// the legend's place and those margins, never what is in it.
#pragma once

#include <QSizeF>

#include "graph/appearance.h"

namespace tarnwick {

class TextMetrics;
class TxyGraph;

/// Puts the legend where it covers least in a picture of `size`, as PlaceLegend does, and keeps it so: what room it had is given
/// back first. In a small picture whose titles name all it is hidden until there is more room.
void PlaceAutomatically(TxyGraph& graph, QSizeF size, const TextMetrics& metrics);

/// The same for a legend that is placed so already; others stay.
void SettleLegend(TxyGraph& graph, QSizeF size, const TextMetrics& metrics);

/// True where such a legend lies over something: it was placed before that came.
bool AutomaticLegendHides(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics);

/// The legend as one whose place was chosen.
Legend ChosenByHand(Legend legend);

/// True where one is shown and the other not, or they stand in different places or ways.
bool StandsOtherwise(const Legend& one, const Legend& other);

}  // namespace tarnwick
