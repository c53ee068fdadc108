#include "graph/files/x_meaning.h"

#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {

std::string NoteOfMixedX(const TxyGraph& graph, XMeaning coming) {
  const bool moments = coming == XMeaning::Moments;
  if (!HasPoints(graph) || graph.Axis(AxisId::X).ShowAsTime() == moments) return {};
  return std::string(moments ? "dates come to an X axis of numbers"
                             : "numbers come to an X axis of dates") +
         ", which shows one of them wrong (a graph window of their own shows them right)";
}

}  // namespace tarnwick
