// Writes an image as PNG quickly: eight-bit palette where the picture has few colours. Knows the image only.
#pragma once

#include <string>

class QImage;

namespace tarnwick {

/// The PNG file's bytes, with the image's resolution. Plots are mostly equal neighbours, so that a light compression costs little
/// size and saves most of the time. Throws Error "Can not write the picture" when the image is null or too large for memory.
std::string EncodePng(const QImage& image);

}  // namespace tarnwick
