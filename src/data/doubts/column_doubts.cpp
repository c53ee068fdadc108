#include "data/doubts/column_doubts.h"

#include "data/columns/import_options.h"
#include "data/doubts/x_doubts.h"
#include "data/doubts/y_doubts.h"

namespace tarnwick {

Doubts DoubtsOfColumns(const ReadColumns& read) {
  using Doubting = void (*)(const ReadColumns&, Doubts&);
  constexpr Doubting kOfX[] = {DoubtDigitsOfX, DoubtCentury, DoubtX, DoubtOneX};
  constexpr Doubting kOfY[] = {DoubtPairsInRows, DoubtDigits, DoubtFarValues, DoubtCodes};
  Doubts doubts;
  const ImportOptions& options = read.options;
  if (!options.x_column && !options.x_format) {
    for (const Doubting doubt : kOfX) doubt(read, doubts);
  }
  if (options.y_columns.empty() && !options.y_format) {
    for (const Doubting doubt : kOfY) doubt(read, doubts);
  }
  return doubts;
}

}  // namespace tarnwick
