// A computed DataSet as it joins a graph: its name, its axis, what is told of where it comes from. Knows graphs; computes
// nothing.
#pragma once

#include <memory>
#include <string>

#include "graph/axes/axis.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// What a computed DataSet shall be called and drawn against.
struct NewSeries {
  std::string name;
  AxisId y_axis = AxisId::Y2;  ///< Y or Y2
};

/// Why no new DataSet can have this name, a sentence; empty when it can.
std::string NameRefusal(const TxyGraph& graph, const std::string& name);

/// Adds a DataSet that was computed from another, whose points and lines are drawn alike, in a colour of its own. A second Y
/// axis that
/// it is drawn against is shown. Throws Error with NameRefusal; the graph is then as it was.
TSeries& AddNewSeries(TxyGraph& graph, std::unique_ptr<TSeries> computed, const TSeries& source,
                      const NewSeries& wanted);

/// Whether new points may come to one of the graph's DataSets at any time.
bool HasLiveSource(const TxyGraph& graph);

/// That what is computed from this DataSet does not follow it, a sentence; empty where no live link feeds it.
std::string LiveSourceText(const TSeries& source);

}  // namespace tarnwick
