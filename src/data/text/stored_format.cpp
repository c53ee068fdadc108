#include "data/text/stored_format.h"

namespace tarnwick {

bool TakesNumbers(ColumnFormat format) {
  return format == ColumnFormat::Automatic || format == ColumnFormat::Number ||
         format == ColumnFormat::DecimalComma || format == ColumnFormat::GroupedThousands ||
         format == ColumnFormat::NumberWithUnit || format == ColumnFormat::ScaledUnit ||
         format == ColumnFormat::Factor;
}

}  // namespace tarnwick
