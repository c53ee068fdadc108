#include "contact_sheet.h"

#include <QFont>
#include <QPainter>
#include <algorithm>

namespace tarnwick::gallery {
namespace {

constexpr int kColumns = 5;
constexpr int kGap = 20;
constexpr int kCaption = 32;

void DrawPicture(QPainter& painter, QPoint corner, const QImage& image, const QString& caption) {
  painter.drawImage(corner, image);
  painter.setPen(QColor(0xB0, 0xB4, 0xB8));
  painter.drawRect(QRect(corner, image.size()).adjusted(-1, -1, 0, 0));
  painter.setPen(Qt::black);
  painter.drawText(QRect(corner.x(), corner.y() + image.height(), image.width(), kCaption),
                   Qt::AlignLeft | Qt::AlignVCenter, caption);
}

}  // namespace

QImage MakeContactSheet(const std::vector<SheetPicture>& first_row,
                        const std::vector<SheetPicture>& grid, QSize cell) {
  QSize row(kGap, 0);
  for (const SheetPicture& picture : first_row) {
    row.rwidth() += picture.image.width() + kGap;
    row.setHeight(std::max(row.height(), picture.image.height()));
  }
  const int lines = (static_cast<int>(grid.size()) + kColumns - 1) / kColumns;
  const int line_height = cell.height() + kCaption;
  QImage sheet(std::max(row.width(), kGap + kColumns * (cell.width() + kGap)),
               kGap + row.height() + kCaption + lines * line_height, QImage::Format_RGB32);
  sheet.fill(QColor(0xEC, 0xEE, 0xF0));
  QPainter painter(&sheet);
  QFont font("Liberation Sans");
  font.setPixelSize(18);
  painter.setFont(font);
  int left = kGap;
  for (const SheetPicture& picture : first_row) {
    const int top = kGap + row.height() - picture.image.height();
    DrawPicture(painter, {left, top}, picture.image, QString::fromStdString(picture.caption));
    left += picture.image.width() + kGap;
  }
  int index = 0;
  for (const SheetPicture& picture : grid) {
    QImage image = picture.image;
    if (image.size() != cell)
      image = image.scaled(cell, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    const QPoint corner(kGap + index % kColumns * (cell.width() + kGap),
                        kGap + row.height() + kCaption + index / kColumns * line_height);
    DrawPicture(painter, corner, image, QString::fromStdString(picture.caption));
    ++index;
  }
  return sheet;
}

}  // namespace tarnwick::gallery
