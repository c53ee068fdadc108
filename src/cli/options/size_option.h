// "--size WxH" and "--pixel X,Y" as typed.
#pragma once

#include <QSizeF>
#include <string>
#include <utility>

namespace tarnwick::cli {

struct PictureSize {
  int width = 800;
  int height = 600;
  QSizeF millimetres = QSizeF();  ///< empty when pixels were given
};

/// "800x600" in pixels or "160x120mm" in millimetres, which become the nearest whole pixels at this resolution; each side 1 to
/// 30000 pixels. Throws UsageError.
PictureSize ParseSize(const std::string& text, int dpi = 96);

/// "1.5,-2". Throws UsageError.
std::pair<double, double> ParsePair(const std::string& text);

}  // namespace tarnwick::cli
