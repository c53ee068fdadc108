#include "app/display/indicator.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <utility>

#include "app/display/display_grid.h"

namespace tarnwick {
namespace {

constexpr int kInside = 8;         // between frame and texts, pixels
constexpr int kLargestValue = 20;  // points
constexpr double kRoundness = 4;

QFont Sized(QFont font, int points) {
  font.setPointSize(points);
  return font;
}

}  // namespace

TIndicator::TIndicator(IndicatorLabels labels, QWidget* parent)
    : QAbstractButton(parent), labels_(std::move(labels)) {
  setFocusPolicy(Qt::TabFocus);
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
  setToolTip(tr("%1 of %2: click to change the value").arg(labels_.parameter, labels_.data_set));
  ShowValue({});
}

void TIndicator::ShowValue(const QString& value) {
  setText(value);
  setAccessibleName(QString("%1 = %2, %3").arg(labels_.parameter, value, labels_.data_set));
}

void TIndicator::TakePlace(const DisplayGrid& grid, int number) {
  value_font_ = grid.value_font;
  second_font_ = grid.second_font;
  setGeometry(grid.Place(number));
  update();
}

/// As large as the room lets the value be, never smaller than the grid says.
QFont TIndicator::ValueFont(int room) const {
  QFont value = font();
  value.setBold(true);
  const int least = DrawnSize(value_font_);
  for (int size = kLargestValue; size > least; --size) {
    value.setPointSize(size);
    if (QFontMetrics(value).horizontalAdvance(text()) <= room) return value;
  }
  return Sized(value, least);
}

void TIndicator::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath frame;
  frame.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRoundness, kRoundness);
  painter.fillPath(frame, palette().base());
  const bool marked = hasFocus() || underMouse();
  painter.setPen(palette().color(marked ? QPalette::Highlight : QPalette::Mid));
  painter.drawPath(frame);

  const QRect inside = rect().adjusted(kInside, kInside, -kInside, -kInside);
  const auto line = [&](const QFont& font, QPalette::ColorRole ink, Qt::Alignment place,
                        const QString& text) {
    painter.setFont(font);
    painter.setPen(palette().color(ink));
    painter.drawText(inside, static_cast<int>(place) | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideMiddle, inside.width()));
  };
  line(Sized(font(), DrawnSize(second_font_)), QPalette::Text, Qt::AlignLeft | Qt::AlignTop,
       labels_.parameter);
  line(ValueFont(inside.width()), QPalette::Text, Qt::AlignRight | Qt::AlignVCenter, text());
  line(Sized(font(), DrawnSize(value_font_)), QPalette::PlaceholderText,
       Qt::AlignLeft | Qt::AlignBottom, labels_.data_set);
}

}  // namespace tarnwick
