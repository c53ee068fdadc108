// The area of a DataSet as its line goes, and what it is the area of. Knows DataSets of a graph.
#pragma once

#include <string>

namespace tarnwick {

class TSeries;

struct AreaFigure {
  double area = 0;
  std::string told;  ///< sentences on a line that turns back or is broken; empty for others
};

/// Between points and base line; of a line that turns back what it encloses.
AreaFigure FindArea(const TSeries& series);

}  // namespace tarnwick
