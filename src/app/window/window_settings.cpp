#include "app/window/window_settings.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#include "desk/settings/settings.h"

namespace tarnwick {
namespace {

enum class StoredState : int { Normal = 0, Minimised = 1, Maximised = 2 };

constexpr const char* kSection = "Tarnwick";
constexpr Setting<int> kState = {kSection, "WindowState", 0, "State of the window"};
constexpr Setting<int> kLeft = {kSection, "GlobalLeft", 100, "Left edge of the window"};
constexpr Setting<int> kTop = {kSection, "GlobalTop", 100, "Top edge of the window"};
constexpr Setting<int> kWidth = {kSection, "GlobalWidth", 790, "Width of the window"};
constexpr Setting<int> kHeight = {kSection, "GlobalHeight", 500, "Height of the window"};
/// The five above say nothing of it while the window is maximised.
constexpr Setting<QRect> kNormalPlace = {
    kSection, "NormalPlace", {}, "Place of the window while not maximised"};

constexpr QSize kSmallest(200, 150);
/// Edges and title bar, about, which no size of a window counts.
constexpr QSize kFrame(10, 36);
// Of the upper edge of a window, to take hold of it by.
constexpr int kLeastWidthSeen = 100;
constexpr int kLeastHeightSeen = 30;

QRect FallbackPlace() {
  return {kLeft.fallback, kTop.fallback, kWidth.fallback, kHeight.fallback};
}

/// The screen on which the upper edge of a window can be seen, or none.
const QScreen* ScreenOf(const QRect& place) {
  for (const QScreen* const screen : QGuiApplication::screens()) {
    const QRect seen = screen->availableGeometry() &
                       QRect(place.left(), place.top(), place.width(), kLeastHeightSeen);
    if (seen.width() >= kLeastWidthSeen && seen.height() >= kLeastHeightSeen) return screen;
  }
  return nullptr;
}

/// `place` where it can be reached: as far as a screen goes, moved to one when it lies on none, and wholly onto it where nobody
/// has put it anywhere.
QRect Reachable(QRect place) {
  const bool sane = place.width() >= kSmallest.width() && place.height() >= kSmallest.height();
  if (!sane) place = FallbackPlace();
  const QScreen* const seen_on = ScreenOf(place);
  const QScreen* const screen = seen_on != nullptr ? seen_on : QGuiApplication::primaryScreen();
  const QRect available = screen->availableGeometry();
  const bool too_large = place.width() > available.width() || place.height() > available.height();
  if (too_large) {
    place.setSize(place.size().boundedTo(available.size() - kFrame));
    place.moveTo(available.topLeft());
  }
  if (seen_on == nullptr || place.topLeft() == FallbackPlace().topLeft()) {
    const QSize whole = place.size() + kFrame;
    const QPoint furthest = available.bottomRight() - QPoint(whole.width(), whole.height());
    place.moveTo(
        std::clamp(kLeft.fallback, available.left(), std::max(available.left(), furthest.x())),
        std::clamp(kTop.fallback, available.top(), std::max(available.top(), furthest.y())));
  }
  return place;
}

StoredState StateOf(const QWidget& window) {
  if (window.isMaximized()) return StoredState::Maximised;
  return window.isMinimized() ? StoredState::Minimised : StoredState::Normal;
}

}  // namespace

std::span<const SettingRow> WindowSettings() {
  static const SettingRow kRows[] = {
      &kState, &kLeft, &kTop, &kWidth, &kHeight, &kNormalPlace, &kButtonCaptions, &kGraphsInTabs};
  return kRows;
}

void RestoreWindow(QWidget& window, const Settings& settings) {
  const int state = settings.Read(kState);
  QRect place(settings.Read(kLeft), settings.Read(kTop), settings.Read(kWidth),
              settings.Read(kHeight));
  if (state != static_cast<int>(StoredState::Normal)) {
    if (const QRect normal = settings.Read(kNormalPlace); normal.isValid()) place = normal;
  }
  place = Reachable(place);
  window.move(place.topLeft());
  window.resize(place.size());
  if (state == static_cast<int>(StoredState::Maximised))
    window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void StoreWindow(const QWidget& window, Settings& settings) {
  settings.Write(kState, static_cast<int>(StateOf(window)));
  settings.Write(kLeft, window.x());
  settings.Write(kTop, window.y());
  settings.Write(kWidth, window.width());
  settings.Write(kHeight, window.height());
  if (StateOf(window) == StoredState::Normal) {
    settings.Write(kNormalPlace, QRect(window.pos(), window.size()));
  } else {
    const QRect normal = window.normalGeometry();
    if (normal.isValid()) settings.Write(kNormalPlace, normal);
  }
}

}  // namespace tarnwick
