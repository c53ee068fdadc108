// Arbitrary bytes as a GIF picture. What is read has at most 256 colours, so written and read again it is the same picture.
#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "graph/gif/gif_file.h"

namespace {

using namespace tarnwick;

constexpr qsizetype kMostWritten = qsizetype{1} << 18;  // pixels; more only cost time

void Require(bool holds) {
  if (!holds) std::abort();
}

GifPicture Read(QByteArray bytes) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  return ReadGif(buffer);
}

void CheckReturns(const QImage& image) {
  QByteArray written;
  QBuffer buffer(&written);
  buffer.open(QIODevice::WriteOnly);
  Require(WriteGif(buffer, image).isEmpty());
  const GifPicture again = Read(written);
  Require(again.error.isEmpty() && again.image == image);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const GifPicture picture =
      Read({reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)});
  Require(picture.image.isNull() != picture.error.isEmpty());
  const qsizetype pixels = qsizetype{picture.image.width()} * picture.image.height();
  if (pixels > 0 && pixels <= kMostWritten) CheckReturns(picture.image);
  return 0;
}
