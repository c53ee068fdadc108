// A text of as many lines as it needs at the width that it gets. Knows no more than a label does.
#pragma once

#include <QLabel>

namespace tarnwick {

/// Asks for its height itself, since forms within scrolled pages press labels together whose height hangs on their width.
class WrappedLabel final : public QLabel {
  Q_OBJECT

 public:
  explicit WrappedLabel(const QString& text, QWidget* parent = nullptr);
  void ShowText(const QString& text);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Fit();
};

/// One of sentences as they stand, which can be copied from.
WrappedLabel* SentencesLabel(QWidget* parent = nullptr);

}  // namespace tarnwick
