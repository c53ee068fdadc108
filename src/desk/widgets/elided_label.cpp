#include "desk/widgets/elided_label.h"

#include <QPainter>

namespace tarnwick {

ElidedLabel::ElidedLabel(Qt::Alignment alignment, QWidget* parent) : QLabel(parent) {
  setAlignment(alignment | Qt::AlignVCenter);
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::ShowText(const QString& text) {
  setText(text);
  setToolTip(fontMetrics().horizontalAdvance(text) > width() ? text : QString());
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect room = contentsRect();
  painter.drawText(room, static_cast<int>(alignment()) | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
}

}  // namespace tarnwick
