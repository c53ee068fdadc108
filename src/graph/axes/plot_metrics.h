// Sizes of texts in logical pixels (1/96 inch), the same for screen, picture and paper. Knows fonts, no layout.
#pragma once

#include <QFont>
#include <QSizeF>
#include <QString>

#include "base/font.h"

namespace tarnwick {

/// The Qt font of a stored one, measured in logical pixels: sizes below 1 point become 8, above 72 points 72.
QFont QtFont(const Font& font);

/// A text with an optional raised exponent, as "10" and "-3".
struct RichText {
  QString text;
  QString superscript;
  bool IsEmpty() const { return text.isEmpty() && superscript.isEmpty(); }
};

/// Measures texts as PaintPlot draws them. Needs a QGuiApplication.
class TextMetrics {
 public:
  virtual ~TextMetrics() = default;
  /// Advance width and line height.
  virtual QSizeF SizeOf(const RichText& text, const Font& font) const;
  double LineHeight(const Font& font) const;
  /// The text itself when it fits into `width`, else its beginning and "…" (or beginning, "…" and end).
  QString Elided(const QString& text, const Font& font, double width,
                 Qt::TextElideMode mode = Qt::ElideRight) const;
};

/// Font of a superscript, and how far its baseline is raised, as a share of the text's ascent.
QFont SuperscriptFont(const QFont& font);
constexpr double SuperscriptRise() {
  return 0.4;
}

/// Minus signs instead of hyphens, for numbers.
QString WithMinusSigns(QString number);

}  // namespace tarnwick
