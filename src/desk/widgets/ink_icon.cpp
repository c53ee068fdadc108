#include "desk/widgets/ink_icon.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>
#include <memory>

#include "desk/widgets/text.h"

// Resources of a static library join the program only when asked for, outside of any namespace.
static void LoadIconResources() {
  Q_INIT_RESOURCE(icons);
}

namespace tarnwick {
namespace {

constexpr const char* kInk = "#2e3440";  // the ink as the drawings have it

class InkIconEngine final : public QIconEngine {
 public:
  explicit InkIconEngine(QString name) : name_(std::move(name)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    QFile file(":/icons/" + name_ + ".svg");
    if (!file.open(QIODevice::ReadOnly)) return;
    const QPalette palette = QGuiApplication::palette();
    const bool disabled = mode == QIcon::Disabled;
    const QColor ink =
        palette.color(mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText);
    QSvgRenderer renderer(file.readAll().replace(kInk, ink.name().toLatin1()));
    painter->save();
    if (disabled) painter->setOpacity(painter->opacity() * 0.35);
    renderer.render(painter, rect);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    const QPalette palette = QGuiApplication::palette();
    if (size != cached_size_ || palette.cacheKey() != cached_palette_) cached_.clear();
    cached_size_ = size;
    cached_palette_ = palette.cacheKey();
    QPixmap& pixmap = cached_[mode];
    if (!pixmap.isNull()) return pixmap;
    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }

  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal) override {
    return pixmap(size, mode, state);
  }

  QIconEngine* clone() const override { return std::make_unique<InkIconEngine>(name_).release(); }

 private:
  QString name_;
  QHash<int, QPixmap> cached_;  // by mode
  QSize cached_size_;
  qint64 cached_palette_ = 0;
};

}  // namespace

QIcon InkIcon(std::string_view name) {
  if (name.empty()) return {};
  LoadIconResources();
  return QIcon(std::make_unique<InkIconEngine>(ToQt(name)).release());
}

}  // namespace tarnwick
