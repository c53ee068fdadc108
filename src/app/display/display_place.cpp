#include "app/display/display_place.h"

#include <algorithm>

#include "desk/settings/settings.h"

namespace tarnwick {
namespace {

constexpr const char* kSection = "Tarnwick";
constexpr Setting<bool> kShown = {kSection, "ShowDisplay", true, "Display panel shown"};
// 1 while it may be dragged to another place.
constexpr Setting<int> kDragKind = {kSection, "DisplayDragKind", 0, "Display panel is dragged"};
constexpr Setting<int> kDragMode = {kSection, "DisplayDragMode", 0, "Dragging begins by itself"};
constexpr Setting<int> kAlign = {kSection, "DisplayAlign", 3, "Side of the display panel"};
constexpr Setting<int> kLeft = {kSection, "DisplayLeft", 0, "Left edge of the display panel"};
constexpr Setting<int> kTop = {kSection, "DisplayTop", 0, "Top edge of the display panel"};
constexpr Setting<int> kWidth = {kSection, "DisplayWidth", 140, "Width of the display panel"};
constexpr Setting<int> kHeight = {kSection, "DisplayHeight", 1000, "Height of the display panel"};

constexpr int kFloating = 0;
/// Sides by their stored numbers, from 1 on.
constexpr DockSide kSides[] = {DockSide::Top, DockSide::Bottom, DockSide::Left, DockSide::Right};

int NumberOf(DockSide side) {
  return static_cast<int>(std::ranges::find(kSides, side) - std::begin(kSides)) + 1;
}

/// 0 is no side.
DockSide SideOf(int number) {
  const bool known = number >= 1 && number <= static_cast<int>(std::size(kSides));
  return known ? kSides[number - 1] : DockSide::Left;
}

int Usable(int stored, int fallback) {
  return stored > 0 ? stored : fallback;
}

}  // namespace

std::span<const SettingRow> DisplaySettings() {
  static const SettingRow kRows[] = {&kShown, &kDragKind, &kDragMode, &kAlign,
                                     &kLeft,  &kTop,      &kWidth,    &kHeight};
  return kRows;
}

void RestoreDisplay(PanelHost& panels, const PanelRow& panel, const Settings& settings) {
  const int align = settings.Read(kAlign);
  PanelPlace place;
  place.shown = settings.Read(kShown);
  place.floats = align == kFloating;
  place.side = SideOf(align);
  place.geometry = {settings.Read(kLeft), settings.Read(kTop),
                    Usable(settings.Read(kWidth), kWidth.fallback),
                    Usable(settings.Read(kHeight), kHeight.fallback)};
  const bool movable = place.floats || settings.Read(kDragKind) == 1;
  place.hold = movable ? PanelHold::Movable : PanelHold::Fixed;
  panels.Put(panel, place);
}

void StoreDisplay(const PanelHost& panels, const PanelRow& panel, Settings& settings) {
  const PanelPlace place = panels.PlaceOf(panel);
  const int movable = place.hold == PanelHold::Movable ? 1 : 0;
  settings.Write(kShown, place.shown);
  settings.Write(kDragKind, movable);
  settings.Write(kDragMode, movable);
  settings.Write(kAlign, place.floats ? kFloating : NumberOf(place.side));
  if (!place.shown) return;  // what was hidden all the time has no place but the stored one
  settings.Write(kLeft, place.geometry.left());
  settings.Write(kTop, place.geometry.top());
  if (place.floats) return;
  settings.Write(kWidth, place.geometry.width());
  settings.Write(kHeight, place.geometry.height());
}

}  // namespace tarnwick
