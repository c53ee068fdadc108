#include "app/fit/verdict_label.h"

#include <QLabel>
#include <algorithm>
#include <string>

#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kIconSize = 26;
constexpr int kGap = 6;

}  // namespace

VerdictLabel::VerdictLabel(const QString& name, QWidget* parent) : QWidget(parent) {
  icon_ = new QLabel(this);
  icon_->setObjectName(name + "Icon");
  icon_->setGeometry(0, 0, kIconSize, kIconSize);
  sentence_ = new QLabel(this);
  sentence_->setObjectName(name);
  sentence_->setWordWrap(true);
  sentence_->setTextFormat(Qt::PlainText);
  sentence_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QFont bold = sentence_->font();
  bold.setBold(true);
  sentence_->setFont(bold);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void VerdictLabel::Show(const FitResult& result) {
  const char* const kind = KindOfVerdict(result);
  icon_->setPixmap(InkIcon(std::string("verdict-") + kind).pixmap(kIconSize, kIconSize));
  icon_->setAccessibleName(tr(kind));
  sentence_->setText(ToQt(result.verdict.summary));
  Arrange();
}

void VerdictLabel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange();
}

/// A sentence of one line stands in the middle of the picture's height.
void VerdictLabel::Arrange() {
  const int left = kIconSize + kGap;
  const int width_left = std::max(width() - left, 1);
  const int height = std::max(sentence_->heightForWidth(width_left), kIconSize);
  sentence_->setGeometry(left, 0, width_left, height);
  setFixedHeight(height);
}

const char* KindOfVerdict(const FitVerdict& verdict) {
  if (verdict.untested) return "untested";
  return verdict.trustworthy ? "good" : "doubtful";
}

const char* KindOfVerdict(const FitResult& result) {
  return Failed(result.outcome.why) ? "failed" : KindOfVerdict(result.verdict);
}

QLabel* HeadingLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

}  // namespace tarnwick
