// Symbols and bars in numbers that no vector picture should hold one by one. Knows painters; no DataSet.
#pragma once

#include <functional>

#include <QColor>

#include "graph/paint/device_space.h"

namespace tarnwick {

/// Draws what `paint` paints into an image in that one colour: a picture file takes it as one image, a metafile, which has no
/// transparency, as the area that it covers.
void PaintCloud(DeviceSpace& space, const SeriesFrame& frame, const QColor& color,
                const std::function<void(DeviceSpace&)>& paint);

}  // namespace tarnwick
