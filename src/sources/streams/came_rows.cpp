#include "sources/streams/came_rows.h"

#include "base/number_text.h"
#include "sources/streams/row_stream.h"

namespace tarnwick {

void CameRows::Count(const StreamRows& taken) {
  rows += static_cast<std::int64_t>(taken.x.size());
  lost += taken.lost;
  unreadable += taken.unreadable;
}

std::string CameRows::Text(std::string_view piece) const {
  std::string text = Counted(rows, "row") + " came";
  if (lost > 0) text += ", " + Counted(lost, "row") + " lost";
  if (unreadable > 0) text += ", " + Counted(unreadable, piece) + " without numbers";
  return text;
}

}  // namespace tarnwick
