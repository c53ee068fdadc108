// Sizes of texts that no installed font decides, and layouts told in words: for tests that compare whole layouts.
#pragma once

#include <string>

#include "base/number_text.h"
#include "graph/axes/plot_metrics.h"
#include "graph/layout/plot_layout.h"

namespace tarnwick::testing {

/// At 8 points every letter is 6 pixels wide and a line 12 high; a raised letter is 4 wide and makes the line 2 higher.
class RuledMetrics : public TextMetrics {
 public:
  QSizeF SizeOf(const RichText& text, const Font& font) const override {
    const double unit = font.size / 8.0;
    return {unit * static_cast<double>(6 * text.text.size() + 4 * text.superscript.size()),
            unit * (text.superscript.isEmpty() ? 12 : 14)};
  }
};

inline std::string Told(double number) {
  return GeneralText(number, 6);
}

inline std::string Told(const QRectF& box) {
  return Told(box.left()) + "," + Told(box.top()) + " " + Told(box.width()) + "x" +
         Told(box.height());
}

inline std::string Told(const QLineF& line) {
  return Told(line.x1()) + "," + Told(line.y1()) + " to " + Told(line.x2()) + "," + Told(line.y2());
}

/// The text as it reads, with what is raised behind "^"; of a cut one only that it is.
inline std::string TextOf(const PlacedText& text) {
  if (text.text.text.contains(u'\u2026')) return "(cut)";
  const std::string raised = text.text.superscript.toStdString();
  return text.text.text.toStdString() + (raised.empty() ? "" : "^" + raised);
}

/// The text with its angle and the size of its font where these are not the usual ones.
inline std::string WordsOf(const PlacedText& text, int usual_size = 8) {
  return TextOf(text) + (text.angle == 0 ? "" : "/" + Told(text.angle)) +
         (text.font.size == usual_size ? "" : "*" + std::to_string(text.font.size));
}

inline std::string Told(const PlacedText& text) {
  return WordsOf(text) + " at " + Told(text.center.x()) + "," + Told(text.center.y());
}

}  // namespace tarnwick::testing
