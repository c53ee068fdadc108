#include "graph/axes/plot_metrics.h"

#include <QFontMetricsF>
#include <QStringList>

namespace tarnwick {
namespace {

constexpr int kSmallestPoints = 1;
constexpr int kLargestPoints = 72;
constexpr int kDefaultPoints = 8;
constexpr double kPixelsPerPoint = 96.0 / 72.0;
constexpr double kSuperscriptShare = 0.72;

}  // namespace

QFont QtFont(const Font& font) {
  const int points = font.size < kSmallestPoints ? kDefaultPoints : qMin(font.size, kLargestPoints);
  QFont qt;
  qt.setFamilies({QString::fromStdString(font.name), QStringLiteral("Liberation Sans"),
                  QStringLiteral("DejaVu Sans")});
  qt.setStyleHint(QFont::SansSerif);
  // Whole pixels and no hinting: the same widths at every resolution.
  qt.setPixelSize(qRound(points * kPixelsPerPoint));
  qt.setHintingPreference(QFont::PreferNoHinting);
  qt.setBold(font.bold);
  qt.setItalic(font.italic);
  qt.setUnderline(font.underline);
  qt.setStrikeOut(font.strikeOut);
  return qt;
}

QFont SuperscriptFont(const QFont& font) {
  QFont small = font;
  small.setPixelSize(qMax(1, qRound(font.pixelSize() * kSuperscriptShare)));
  return small;
}

QSizeF TextMetrics::SizeOf(const RichText& text, const Font& font) const {
  const QFont qt = QtFont(font);
  const QFontMetricsF metrics(qt);
  double width = metrics.horizontalAdvance(text.text);
  double height = metrics.ascent() + metrics.descent();
  if (!text.superscript.isEmpty()) {
    width += QFontMetricsF(SuperscriptFont(qt)).horizontalAdvance(text.superscript);
    height += metrics.ascent() * SuperscriptRise() / 2;
  }
  return {width, height};
}

double TextMetrics::LineHeight(const Font& font) const {
  return SizeOf({QStringLiteral("0"), {}}, font).height();
}

QString TextMetrics::Elided(const QString& text, const Font& font, double width,
                            Qt::TextElideMode mode) const {
  if (SizeOf({text, {}}, font).width() <= width) return text;
  return QFontMetricsF(QtFont(font)).elidedText(text, mode, width);
}

QString WithMinusSigns(QString number) {
  return number.replace(u'-', u'\u2212');
}

}  // namespace tarnwick
