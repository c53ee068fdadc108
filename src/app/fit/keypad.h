// Keys for what expressions are written with, and the list of functions with what they mean. Knows texts; the expression they go
// into is somebody else's.
#pragma once

#include <QWidget>

class QLabel;
class QListWidget;

namespace tarnwick {

class Keypad final : public QWidget {
  Q_OBJECT

 public:
  explicit Keypad(QWidget* parent = nullptr);

 signals:
  /// To be written at the cursor.
  void inserted(const QString& text);

 private:
  QWidget* MakeKeys();
  QWidget* MakeFunctions();

  QListWidget* functions_ = nullptr;
  QLabel* meaning_ = nullptr;
};

}  // namespace tarnwick
