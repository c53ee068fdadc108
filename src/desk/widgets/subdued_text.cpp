#include "desk/widgets/subdued_text.h"

#include <QApplication>
#include <QPalette>

namespace tarnwick {
namespace {

constexpr float kPaleness = 0.6F;  // opaque enough for small letters

}  // namespace

void SubdueByTextColor() {
  const QPalette present = QApplication::palette();
  QColor subdued = present.color(QPalette::WindowText);
  subdued.setAlphaF(kPaleness);
  if (present.color(QPalette::PlaceholderText) == subdued) return;
  QPalette own;  // of nothing else, so that all else follows the theme
  own.setColor(QPalette::PlaceholderText, subdued);
  QApplication::setPalette(own);
}

}  // namespace tarnwick
