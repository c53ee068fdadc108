// Columns of numbers from a text, and what they make of a DataSet's points. Plain functions on values, fit for a worker
// thread; they know no clipboard and no widget.
#pragma once

#include <cstddef>
#include <string>

#include "base/progress.h"
#include "data/series/data_state.h"

namespace tarnwick {

struct PastedPoints {
  DataState state;            ///< the DataSet afterwards
  std::size_t taken = 0;      ///< values of Y that went into points
  std::size_t left_over = 0;  ///< values of Y for which there is no point
  std::size_t columns_unused = 0;
  bool cancelled = false;
};

/// Two columns are X and Y of points added by the DataSet's rules; one column overwrites Y of the points at `first` (from 0) and
/// behind it. Throws Error when the text holds no numbers.
PastedPoints PasteInto(const DataState& into, std::size_t first, const std::string& text,
                       Progress& progress);

}  // namespace tarnwick
