#include "probe/probe.h"

#include "base/error.h"
#include "desk/document/document.h"
#include "graph/axes/axis_fields.h"

namespace tarnwick::testing {
namespace {

std::unique_ptr<TxyGraph> Graph() {
  auto graph = std::make_unique<TxyGraph>();
  graph->AddSeries(std::make_unique<TSeries>()).AddPoint(1, 2);
  return graph;
}

void Refuse() {
  throw FileError("refused", "file", "");
}

}  // namespace

extern "C" Probe TarnwickProbe() {
  return {AxisFields().data(), &Document::staticMetaObject, &Graph, &Refuse};
}

}  // namespace tarnwick::testing
