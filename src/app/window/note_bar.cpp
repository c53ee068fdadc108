#include "app/window/note_bar.h"

#include <QPainter>

namespace tarnwick {
namespace {

QColor Mixed(const QColor& one, const QColor& other, double share) {
  const auto mix = [share](float a, float b) { return a + (b - a) * static_cast<float>(share); };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
}

}  // namespace

void NoteBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor window = palette().color(QPalette::Window);
  const QColor accent = palette().color(QPalette::Highlight);
  painter.fillRect(rect(), Mixed(window, accent, 0.14));
  painter.fillRect(0, height() - 1, width(), 1, Mixed(window, accent, 0.5));
}

}  // namespace tarnwick
