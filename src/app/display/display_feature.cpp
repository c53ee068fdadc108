#include "app/display/display_feature.h"

#include "app/display/display_panel.h"
#include "app/display/display_place.h"

namespace tarnwick {
namespace {

void Restore(PanelHost& panels, const Settings& settings);
void Store(const PanelHost& panels, Settings& settings);

constexpr PanelRow kDisplays = {.name = "DisplayPanel",
                                .caption = "Display Panel",
                                .side = DockSide::Left,
                                .make = MakeDisplayPanel,
                                .restore = Restore,
                                .store = Store};

void Restore(PanelHost& panels, const Settings& settings) {
  RestoreDisplay(panels, kDisplays, settings);
}

void Store(const PanelHost& panels, Settings& settings) {
  StoreDisplay(panels, kDisplays, settings);
}

bool IsShown(const CommandContext& context) {
  return context.panels.IsShown(kDisplays);
}

CommandFace ShowFace(const CommandContext& context) {
  if (IsShown(context)) return {};
  return {.caption = "Show &Displays", .hint = "Show Displays|Show Display Panel"};
}

bool IsMovable(const CommandContext& context) {
  return context.panels.PlaceOf(kDisplays).hold == PanelHold::Movable;
}

/// Takes the panel off its side, or docks it where it came from last.
void Move(CommandContext& context) {
  const bool fix = IsMovable(context);
  PanelPlace place = context.panels.PlaceOf(kDisplays);
  place.floats = !fix;
  place.hold = fix ? PanelHold::Fixed : PanelHold::Movable;
  place.geometry = {};
  context.panels.Put(kDisplays, place);
}

CommandFace MoveFace(const CommandContext& context) {
  if (!IsMovable(context)) return {};
  return {.caption = "&Fix Displays", .hint = "Dock Display Panel|Dock Display Panel"};
}

}  // namespace

Feature DisplayFeature() {
  static constexpr Command kCommands[] = {
      {.name = "WindowShowDisplay1",
       .caption = "Hide &Displays",
       .hint = "Hide Displays|Hide Display Panel",
       .icon = "displays",
       .menu = Menu::View,
       .run = [](CommandContext& c) { Toggle(c.panels, kDisplays); },
       .face_now = ShowFace},
      {.name = "WindowMoveDisplay1",
       .caption = "&Move Displays",
       .hint = "UnDock Display Panel|UnDock Display Panel",
       .icon = "displays-move",
       .menu = Menu::View,
       .enabled = IsShown,
       .run = Move,
       .face_now = MoveFace},
  };
  static constexpr PanelRow kPanels[] = {kDisplays};
  return {
      .name = "display", .commands = {kCommands}, .panels = kPanels, .settings = DisplaySettings()};
}

}  // namespace tarnwick
