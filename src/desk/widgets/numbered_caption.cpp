#include "desk/widgets/numbered_caption.h"

#include <QFontMetrics>

namespace tarnwick {
namespace {

constexpr int kWidestCharacters = 80;  // of average width

}  // namespace

QString NumberedCaption(std::size_t number, const QString& text, const QFontMetrics& metrics) {
  QString shown =
      metrics.elidedText(text, Qt::ElideMiddle, kWidestCharacters * metrics.averageCharWidth());
  return QStringLiteral("&%1 %2").arg(number).arg(shown.replace("&", "&&"));
}

}  // namespace tarnwick
