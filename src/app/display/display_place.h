// Where the display panel stands, kept between runs. Knows settings and panels.
#pragma once

#include <span>

#include "desk/panels/panel.h"
#include "desk/settings/setting.h"

namespace tarnwick {

/// Those that the place is kept in.
std::span<const SettingRow> DisplaySettings();

/// Puts the panel where it stood and shows it if it was shown. What is damaged falls back: docked at the left.
void RestoreDisplay(PanelHost& panels, const PanelRow& panel, const Settings& settings);
void StoreDisplay(const PanelHost& panels, const PanelRow& panel, Settings& settings);

}  // namespace tarnwick
