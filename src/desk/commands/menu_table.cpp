#include "desk/commands/menu_table.h"

namespace tarnwick {

std::span<const MenuRow> MenuTable() {
  static constexpr MenuRow kRows[] = {
      {Menu::File, "&File"},
      {Menu::Edit, "&Edit"},
      {Menu::Window, "&Window"},
      {Menu::View, "&View"},
      {Menu::Legend, "&Legend", Menu::View, 1},
      {Menu::Zoom, "&Zoom", Menu::View, 1},
      {Menu::Data, "&Data"},
      {Menu::RefreshData, "&Refresh Data", Menu::Data},
      {Menu::XAxisShift, "&X-Axis Shift", Menu::Data, 1},
      {Menu::CurveFitting, "Curve &Fitting", Menu::Data, 1},
      {Menu::Mark, "&Mark"},
      {Menu::Insert, "&Insert"},
      {Menu::Analysis, "Anal&ysis"},
      {Menu::Help, "&Help"},
  };
  return kRows;
}

}  // namespace tarnwick
