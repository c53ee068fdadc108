#include "editors/data/guessed_columns.h"

#include "data/columns/column_roles.h"
#include "data/import/import_file.h"

namespace tarnwick {
namespace {

bool IsThere(const ImportSource& source, const std::string& column) {
  return source.supplier->ColumnIndex(column) >= 0;
}

ColumnFormat FormatOf(const ImportSource& source, const std::string& column) {
  return source.GuessOf(source.supplier->ColumnIndex(column)).format;
}

}  // namespace

TDSInfo WithColumns(const ImportSource& guessed, const TDSInfo& before) {
  TDSInfo info = guessed.info;
  if (IsThere(guessed, before.XDataColumn) && IsThere(guessed, before.YDataColumn)) {
    for (const auto member : {&TDSInfo::XDataColumn, &TDSInfo::YDataColumn, &TDSInfo::YErrorColumn,
                              &TDSInfo::XErrorColumn, &TDSInfo::XColExpr, &TDSInfo::YColExpr}) {
      info.*member = before.*member;
    }
  } else {
    const ChosenColumns chosen = ChooseColumns(guessed, {});
    info.XDataColumn = guessed.ReferenceTo(chosen.x);
    info.YDataColumn = guessed.ReferenceTo(chosen.y.front());
  }
  info.XFormat = FormatOf(guessed, info.XDataColumn);
  info.YFormat = FormatOf(guessed, info.YDataColumn);
  return info;
}

}  // namespace tarnwick
