#include "desk/fields/mnemonics.h"

namespace tarnwick {

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

}  // namespace tarnwick
