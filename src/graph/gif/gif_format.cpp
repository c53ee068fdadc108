#define QT_STATICPLUGIN  // the plug-in is part of the program
#include "graph/gif/gif_format.h"

#include <QImageIOHandler>
#include <QImageIOPlugin>
#include <QtPlugin>

#include "graph/gif/gif_file.h"

namespace tarnwick {
namespace {

class GifHandler final : public QImageIOHandler {
 public:
  bool canRead() const override { return device() && !read_ && IsGif(*device()); }
  bool read(QImage* image) override {
    if (!device()) return false;
    read_ = true;
    GifPicture picture = ReadGif(*device());
    *image = std::move(picture.image);
    return picture.error.isEmpty();
  }
  bool write(const QImage& image) override {
    return device() && WriteGif(*device(), image).isEmpty();
  }

 private:
  bool read_ = false;  // there is one picture to read
};

}  // namespace
}  // namespace tarnwick

// The macros below want the plug-in's class in no namespace.
class TarnwickGifPlugin final : public QImageIOPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QImageIOHandlerFactoryInterface" FILE "gif_format.json")

 public:
  Capabilities capabilities(QIODevice* device, const QByteArray& format) const override {
    if (format == "gif") return CanRead | CanWrite;
    if (!format.isEmpty() || !device || !device->isOpen()) return {};
    return device->isReadable() && tarnwick::IsGif(*device) ? CanRead : Capabilities();
  }
  QImageIOHandler* create(QIODevice* device, const QByteArray& format) const override {
    auto* const handler = new tarnwick::GifHandler;
    handler->setDevice(device);
    handler->setFormat(format);
    return handler;
  }
};

const QStaticPlugin qt_static_plugin_TarnwickGifPlugin();  // defined by what moc writes

namespace tarnwick {

void RegisterGifFormat() {
  qRegisterStaticPluginFunction(qt_static_plugin_TarnwickGifPlugin());
}

}  // namespace tarnwick

#include "gif_format.moc"
