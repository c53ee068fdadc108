#include "app/fit/verdict_label.h"

#include <QHBoxLayout>
#include <QLabel>
#include <string>

#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"
#include "desk/widgets/wrapped_label.h"

namespace tarnwick {
namespace {

constexpr int kIconSize = 26;

}  // namespace

VerdictLabel::VerdictLabel(const QString& name, QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  icon_ = new QLabel(this);
  icon_->setObjectName(name + "Icon");
  sentence_ = SentencesLabel(this);
  sentence_->setObjectName(name);
  QFont bold = sentence_->font();
  bold.setBold(true);
  sentence_->setFont(bold);
  row->addWidget(icon_, 0, Qt::AlignTop);
  row->addWidget(sentence_, 1);
}

void VerdictLabel::Show(const FitResult& result) {
  const char* const kind = Failed(result.outcome.why) ? "failed" : KindOfVerdict(result.verdict);
  icon_->setPixmap(InkIcon(std::string("verdict-") + kind).pixmap(kIconSize, kIconSize));
  icon_->setAccessibleName(tr(kind));
  sentence_->ShowText(ToQt(result.verdict.summary));
}

const char* KindOfVerdict(const FitVerdict& verdict) {
  if (verdict.untested) return "untested";
  return verdict.trustworthy ? "good" : "doubtful";
}

QLabel* HeadingLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

}  // namespace tarnwick
