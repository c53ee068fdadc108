// Pictures reduced to at most 256 colours. Knows images, no file formats.
#pragma once

#include <QImage>

namespace tarnwick {

/// The image with eight bits a pixel and a table of its colours: exactly when it has at most 256, else the nearest of 256 chosen
/// by median cut (P. Heckbert, "Color image quantization for frame buffer display", SIGGRAPH 1982). A pixel less than half
/// opaque becomes the table's one transparent colour. A null image stays null.
QImage WithFewColors(const QImage& image);

}  // namespace tarnwick
