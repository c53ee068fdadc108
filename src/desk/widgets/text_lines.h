// A text in as many lines as its width needs, up to a limit; what does not fit ends in "…" and is found in the tool tip.
#pragma once

#include <QWidget>

namespace tarnwick {

class TextLines final : public QWidget {
 public:
  explicit TextLines(int most, QWidget* parent = nullptr);

  void ShowText(const QString& text);
  const QString& Text() const { return text_; }

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QStringList Lines(int width) const;

  QString text_;
  int most_;
};

}  // namespace tarnwick
