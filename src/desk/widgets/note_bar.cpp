#include "desk/widgets/note_bar.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

#include "desk/widgets/ink_icon.h"

namespace tarnwick {
namespace {

QColor Mixed(const QColor& one, const QColor& other, double share) {
  const auto mix = [share](float a, float b) { return a + (b - a) * static_cast<float>(share); };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
}

}  // namespace

QLabel* NoteIcon(QWidget* parent) {
  auto* const icon = new QLabel(parent);
  const int side = parent->style()->pixelMetric(QStyle::PM_SmallIconSize);
  icon->setPixmap(InkIcon("about").pixmap(side, side));
  return icon;
}

QToolButton* CloseButton(QWidget* parent) {
  auto* const close = new QToolButton(parent);
  close->setAutoRaise(true);
  close->setFocusPolicy(Qt::TabFocus);
  close->setIcon(InkIcon("title-close"));
  close->setAccessibleName(NoteBar::tr("Close this note"));
  close->setToolTip(close->accessibleName());
  return close;
}

void NoteBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor window = palette().color(QPalette::Window);
  const QColor accent = palette().color(QPalette::Highlight);
  painter.fillRect(rect(), Mixed(window, accent, 0.14));
  painter.fillRect(0, height() - 1, width(), 1, Mixed(window, accent, 0.5));
}

}  // namespace tarnwick
