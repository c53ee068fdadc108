// A recent file on the start page: its picture, its name, whether it is still there. Knows one file's name; looks for nothing.
#pragma once

#include <QImage>
#include <QToolButton>

namespace tarnwick {

class RecentTile final : public QToolButton {
  Q_OBJECT

 public:
  /// Of a tile, pixels.
  static constexpr int kWidth = 132;

  RecentTile(const QString& path, QWidget* parent);
  void ShowPicture(const QImage& picture);
  void ShowThere();
  void ShowMissing();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Draw();

  QString path_;
  QImage picture_;  // null: none is kept
  bool missing_ = false;
};

}  // namespace tarnwick
