// What there is to tell of how a graph's DataSets were read, whenever each of them was. Knows graphs and reports; reads nothing.
#pragma once

#include "data/import/import_told.h"
#include "desk/document/points_as_read.h"

namespace tarnwick {

class TxyGraph;

/// The sentence of opening, but for what was guessed then.
ImportTold ToldOfReading(TxyGraph& whole, const PointsAsRead& read);

/// True where what was found out about a source read as `before` holds for it read as `now`: neither columns nor the way its
/// lines are cut are other ones.
bool SameLayout(TDSInfo now, const TDSInfo& before);

}  // namespace tarnwick
