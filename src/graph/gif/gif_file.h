// Reads and writes GIF pictures by giflib. Knows devices and images; no plug-ins, no graphs.
#pragma once

#include <QImage>
#include <QString>

class QIODevice;

namespace tarnwick {

/// What came of reading: an image, or why there is none.
struct GifPicture {
  QImage image;
  QString error;
};

/// The first picture of the file, interlaced or not, on the file's canvas, whose other pixels are transparent. A file that is
/// cut off, damaged or has more than 2^26 pixels gives an error.
GifPicture ReadGif(QIODevice& device);

/// True when the device goes on with a GIF's first bytes; its position stays.
bool IsGif(QIODevice& device);

/// Writes the image with at most 256 colours, one of them transparent where it has transparent pixels. Answers what went wrong,
/// empty for nothing: a side beyond 65535, a device that takes no more.
QString WriteGif(QIODevice& device, const QImage& image);

}  // namespace tarnwick
