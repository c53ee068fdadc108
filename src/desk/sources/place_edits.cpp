#include "desk/sources/place_edits.h"

#include <algorithm>

#include "desk/sources/arrays_edit.h"
#include "desk/sources/database_edit.h"
#include "desk/sources/lines_edit.h"
#include "desk/sources/link_edit.h"
#include "desk/sources/sheet_edit.h"

namespace tarnwick {
namespace {

template <class Edit>
PlaceEdit* Make(QWidget* parent) {
  return new Edit(parent);
}

constexpr PlaceEditRow kRows[] = {
    {DataSourceKind::Database, "Data base", &Make<DatabaseEdit>},
    {DataSourceKind::Dde, "Live links", &Make<LinkEdit>},
    {DataSourceKind::Lines, "Lines of a pipe, a socket or a serial port", &Make<LinesEdit>},
    {DataSourceKind::Spreadsheet, "Workbook", &Make<SheetEdit>, false},
    {DataSourceKind::Arrays, "Arrays", &Make<ArraysEdit>, false},
};

}  // namespace

std::span<const PlaceEditRow> PlaceEdits() {
  return kRows;
}

const PlaceEditRow* PlaceEditOf(DataSourceKind kind) {
  const auto* const found = std::ranges::find(kRows, kind, &PlaceEditRow::kind);
  return found == std::end(kRows) ? nullptr : found;
}

}  // namespace tarnwick
