#include "app/window/recent_tile.h"

#include <QEvent>
#include <QFileInfo>
#include <QPainter>

#include "desk/widgets/ink_icon.h"

namespace tarnwick {
namespace {

constexpr QSize kPicture(120, 81);
constexpr int kIcon = 32;
constexpr double kFaded = 0.35;

}  // namespace

RecentTile::RecentTile(const QString& path, QWidget* parent) : QToolButton(parent), path_(path) {
  const int lines = fontMetrics().height();
  setText(fontMetrics().elidedText(QFileInfo(path).fileName(), Qt::ElideMiddle, kWidth - 8));
  setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  setIconSize(kPicture);
  setFixedSize(kWidth, kPicture.height() + lines + 14);
  setAutoRaise(true);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  Draw();
}

void RecentTile::ShowPicture(const QImage& picture) {
  picture_ = picture;
  Draw();
}

void RecentTile::ShowThere() {
  if (!missing_) return;
  missing_ = false;
  Draw();
}

void RecentTile::ShowMissing() {
  missing_ = true;
  Draw();
}

void RecentTile::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) Draw();
  QToolButton::changeEvent(event);
}

void RecentTile::Draw() {
  const QString name = missing_ ? tr("%1 is not found").arg(path_) : path_;
  setToolTip(name);
  setAccessibleName(name);

  const double ratio = devicePixelRatioF();
  QPixmap drawn(kPicture * ratio);
  drawn.setDevicePixelRatio(ratio);
  drawn.fill(palette().color(QPalette::Base));
  QPainter painter(&drawn);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QRect whole({0, 0}, kPicture);
  if (missing_) painter.setOpacity(kFaded);
  if (picture_.isNull() && !missing_) {
    const QRect middle((whole.width() - kIcon) / 2, (whole.height() - kIcon) / 2, kIcon, kIcon);
    InkIcon("graph").paint(&painter, middle);
  } else if (!picture_.isNull()) {
    const QSize shown = kPicture * ratio;
    painter.drawImage(whole,
                      picture_.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  painter.setOpacity(1);
  if (missing_) {
    const int height = fontMetrics().height() + 6;
    const QRect strip(0, (whole.height() - height) / 2, whole.width(), height);
    painter.fillRect(strip, palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(strip, Qt::AlignCenter, tr("not found"));
  }
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(QRectF(whole).adjusted(0.5, 0.5, -0.5, -0.5));
  painter.end();
  setIcon(drawn);
}

}  // namespace tarnwick
