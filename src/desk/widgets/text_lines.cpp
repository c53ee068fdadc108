#include "desk/widgets/text_lines.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>

namespace tarnwick {
namespace {

constexpr int kNarrowest = 80;
constexpr int kUsualWidth = 320;

}  // namespace

TextLines::TextLines(int most, QWidget* parent) : QWidget(parent), most_(most) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void TextLines::ShowText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  setAccessibleName(text);
  setToolTip(text);
  updateGeometry();
  update();
}

QStringList TextLines::Lines(int width) const {
  QTextLayout layout(text_, font());
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    if (lines.size() + 1 == most_) {
      lines.append(fontMetrics().elidedText(text_.mid(line.textStart()), Qt::ElideRight, width));
      break;
    }
    lines.append(text_.mid(line.textStart(), line.textLength()));
  }
  layout.endLayout();
  return lines;
}

int TextLines::heightForWidth(int width) const {
  return std::max<int>(1, static_cast<int>(Lines(width).size())) * fontMetrics().lineSpacing();
}

QSize TextLines::sizeHint() const {
  return {kUsualWidth, heightForWidth(kUsualWidth)};
}

QSize TextLines::minimumSizeHint() const {
  return {kNarrowest, fontMetrics().lineSpacing()};
}

void TextLines::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QStringList lines = Lines(width());
  const int spacing = fontMetrics().lineSpacing();
  int top = (height() - static_cast<int>(lines.size()) * spacing) / 2;
  for (const QString& line : lines) {
    painter.drawText(QRect(0, top, width(), spacing), Qt::AlignLeft | Qt::AlignVCenter, line);
    top += spacing;
  }
}

}  // namespace tarnwick
