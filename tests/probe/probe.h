// What the library loaded by tests/host tells of the engine and the desk it finds itself in.
#pragma once

#include <QMetaObject>
#include <memory>

#include "graph/xy_graph.h"

namespace tarnwick::testing {

struct Probe {
  const void* axis_fields;               ///< where the table of an axis' fields lies
  const QMetaObject* document;           ///< that of documents
  std::unique_ptr<TxyGraph> (*graph)();  ///< a graph with one DataSet of one point, (1, 2)
  void (*refuse)();                      ///< throws FileError with the text "refused"
};

/// The one name the library exports: "TarnwickProbe".
using ProbeFunction = Probe (*)();

}  // namespace tarnwick::testing
