#include "graph/metafile/metafile_picture.h"

#include <QSize>
#include <algorithm>
#include <cmath>

#include "graph/metafile/metafile_engine.h"

namespace tarnwick {
namespace {

constexpr double kInchMillimetres = 25.4;

/// Whole units to the pixel, so that pixels stand exactly: as many as keep the longer side within 16 bits, and no more than
/// give a fine print.
int UnitsPerPixel(QSize pixels, int dpi) {
  constexpr int kLargestExtent = 30000;
  constexpr int kFinestInch = 4800;
  const int longest = std::max(pixels.width(), pixels.height());
  return std::max(1, std::min(kLargestExtent / longest, kFinestInch / dpi));
}

}  // namespace

MetafilePicture::MetafilePicture(QSize pixels, int dpi)
    : pixels_(pixels),
      dpi_(dpi),
      engine_(std::make_unique<MetafileEngine>(pixels, dpi, UnitsPerPixel(pixels, dpi))) {}

MetafilePicture::~MetafilePicture() = default;

std::string MetafilePicture::Bytes() const {
  return engine_->Bytes();
}

QPaintEngine* MetafilePicture::paintEngine() const {
  return engine_.get();
}

int MetafilePicture::metric(PaintDeviceMetric metric) const {
  const auto millimetres = [&](int pixels) {
    return static_cast<int>(std::lround(pixels * kInchMillimetres / dpi_));
  };
  constexpr int kTrueColors = 1 << 24;
  switch (metric) {
    case PdmWidth:
      return pixels_.width();
    case PdmHeight:
      return pixels_.height();
    case PdmWidthMM:
      return millimetres(pixels_.width());
    case PdmHeightMM:
      return millimetres(pixels_.height());
    case PdmNumColors:
      return kTrueColors;
    case PdmDepth:
      return 24;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
      return dpi_;
    case PdmDevicePixelRatio:
      return 1;
    case PdmDevicePixelRatioScaled:
      return static_cast<int>(devicePixelRatioFScale());
  }
  return 0;
}

}  // namespace tarnwick
