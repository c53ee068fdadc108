#include "app/window/window_session.h"

#include <QMdiArea>
#include <QStringList>
#include <optional>
#include <system_error>

#include "app/window/graph_window.h"
#include "desk/settings/settings.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

/// One text for each window: "active state left top width height path".
const Setting<QStringList> kSession = {
    .section = "Tarnwick", .key = "Session", .label = "Windows of the last session"};
constexpr int kNumbers = 6;          // before the path
constexpr QSize kLeastSeen(80, 40);  // of a window, to find it by

QString TextOf(const SessionWindow& window) {
  const QRect& place = window.place;
  return QStringLiteral("%1 %2 %3 %4 %5 %6 ")
             .arg(window.active ? 1 : 0)
             .arg(static_cast<int>(window.shown))
             .arg(place.left())
             .arg(place.top())
             .arg(place.width())
             .arg(place.height()) +
         PathText(window.file);
}

/// Nothing for what is no such text.
std::optional<SessionWindow> WindowOf(const QString& text) {
  int numbers[kNumbers];
  qsizetype begin = 0;
  for (int& number : numbers) {
    const qsizetype end = text.indexOf(' ', begin);
    bool is_number = false;
    number = text.mid(begin, end - begin).toInt(&is_number);
    if (end < 0 || !is_number) return std::nullopt;
    begin = end + 1;
  }
  const auto [active, shown, left, top, width, height] = numbers;
  if (begin == text.size() || shown < 0 || shown > static_cast<int>(WindowShown::Maximised))
    return std::nullopt;
  return SessionWindow{.file = ToPath(text.mid(begin)),
                       .place = {left, top, width, height},
                       .shown = static_cast<WindowShown>(shown),
                       .active = active != 0};
}

WindowShown ShownOf(const TGraphWindow& window) {
  if (window.isMaximized()) return WindowShown::Maximised;
  return window.isMinimized() ? WindowShown::Minimised : WindowShown::Normal;
}

}  // namespace

std::span<const SettingRow> SessionSettings() {
  static const SettingRow kRows[] = {&kReopenAtStart, &kSession};
  return kRows;
}

std::filesystem::path SessionFileOf(const Document& document) {
  const DocumentFiles& files = document.Files();
  const auto& file = files.GraphFileName().empty() ? files.DataFileName() : files.GraphFileName();
  std::error_code ignored;  // without a folder to work in there is no whole path
  return file.empty() ? file : std::filesystem::absolute(file, ignored).lexically_normal();
}

SessionWindow SessionWindowOf(const TGraphWindow& window, const TGraphWindow* active) {
  return {.file = SessionFileOf(window.GetDocument()),
          .place = window.geometry(),
          .shown = ShownOf(window),
          .active = &window == active};
}

void PlaceAsKept(TGraphWindow& window, const SessionWindow& kept) {
  const QMdiArea* const area = window.mdiArea();
  if (area == nullptr || area->viewMode() == QMdiArea::TabbedView) return;
  if (kept.shown != WindowShown::Normal) {
    kept.shown == WindowShown::Maximised ? window.showMaximized() : window.showMinimized();
    return;
  }
  window.showNormal();
  const QRect place = kept.place & area->viewport()->rect();
  if (place.width() >= kLeastSeen.width() && place.height() >= kLeastSeen.height())
    window.setGeometry(place);
}

void KeepSession(const std::vector<SessionWindow>& windows, Settings& settings) {
  QStringList texts;
  for (const SessionWindow& window : windows) {
    if (!window.file.empty()) texts.append(TextOf(window));
  }
  settings.Write(kSession, texts);
}

std::vector<SessionWindow> KeptSession(const Settings& settings) {
  std::vector<SessionWindow> windows;
  for (const QString& text : settings.Read(kSession)) {
    if (auto window = WindowOf(text)) windows.push_back(*std::move(window));
  }
  return windows;
}

}  // namespace tarnwick
