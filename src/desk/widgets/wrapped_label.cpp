#include "desk/widgets/wrapped_label.h"

#include <algorithm>

namespace tarnwick {

WrappedLabel::WrappedLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setWordWrap(true);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void WrappedLabel::ShowText(const QString& text) {
  setText(text);
  Fit();
}

void WrappedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Fit();
}

void WrappedLabel::Fit() {
  // heightForWidth answers no less, so that a label made wider would stay high.
  setMinimumHeight(0);
  setFixedHeight(std::max(heightForWidth(width()), 0));  // below 0 without a text
}

WrappedLabel* SentencesLabel(QWidget* parent) {
  auto* label = new WrappedLabel({}, parent);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace tarnwick
