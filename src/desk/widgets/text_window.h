// A window that shows a text to read, copy and print. Knows nothing of what the text is about.
#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace tarnwick {

class TextWindow final : public QDialog {
  Q_OBJECT

 public:
  TextWindow(const QString& caption, const QString& text, QWidget* parent = nullptr);

 private:
  void Copy();
  void Print();

  QPlainTextEdit* text_;
};

}  // namespace tarnwick
