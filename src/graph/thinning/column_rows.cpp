#include "graph/thinning/column_rows.h"

namespace tarnwick {

void ColumnRows::Close() {
  taken_.Reset(0);
  taken_.Reset(rows_ + 1);
  closed_ = taken_;
  closed_.SetAfterAny(gap_);
  closed_.KeepBeforeAll(gap_);
}

}  // namespace tarnwick
