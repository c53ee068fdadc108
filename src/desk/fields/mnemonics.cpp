#include "desk/fields/mnemonics.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>

namespace tarnwick {
namespace {

/// "" where a label leads to no control.
QString MarkedText(const QWidget& widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
  const auto* label = qobject_cast<const QLabel*>(&widget);
  return label && label->buddy() ? label->text() : QString();
}

/// The small letter; empty for none.
QString LetterOf(const QWidget& widget) {
  return QKeySequence::mnemonic(MarkedText(widget)).toString().right(1).toLower();
}

}  // namespace

QString Mnemonics::Mark(const QString& caption) {
  for (qsizetype i = 0; i < caption.size(); ++i) {
    const QChar letter = caption[i].toLower();
    if (!letter.isLetter() || taken_.contains(letter)) continue;
    taken_ += letter;
    const QString before = caption.left(i);
    return QString(before).replace('&', "&&") + '&' + caption.mid(i).replace('&', "&&");
  }
  return QString(caption).replace('&', "&&");
}

void UnmarkTaken(QWidget& part, const QWidget& page, QString taken) {
  taken += kMenuBarLetters;
  for (const QWidget* const other : page.findChildren<QWidget*>()) {
    if (!part.isAncestorOf(other) && other->isVisibleTo(&page)) taken += LetterOf(*other);
  }
  for (QWidget* const own : part.findChildren<QWidget*>()) {
    const QString letter = LetterOf(*own);
    if (letter.isEmpty() || !taken.contains(letter)) continue;
    QString text = MarkedText(*own);
    text.remove(text.indexOf('&' + letter, 0, Qt::CaseInsensitive), 1);
    own->setProperty("text", text);
  }
}

}  // namespace tarnwick
