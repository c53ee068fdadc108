// A verdict as its picture and its sentence. Knows results; judges nothing.
#pragma once

#include <QWidget>

#include "fit/fit_result.h"

class QLabel;

namespace tarnwick {

/// As high as the sentence needs at the width that it gets, which it asks for itself as a WrappedLabel does.
class VerdictLabel final : public QWidget {
  Q_OBJECT

 public:
  /// The label of the sentence is named `name`.
  explicit VerdictLabel(const QString& name, QWidget* parent = nullptr);
  void Show(const FitResult& result);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Arrange();

  QLabel* icon_ = nullptr;
  QLabel* sentence_ = nullptr;
};

/// One name for the picture and for who cannot see it.
const char* KindOfVerdict(const FitVerdict& verdict);
/// "failed" where the fit did.
const char* KindOfVerdict(const FitResult& result);

/// A label of one line in bold letters.
QLabel* HeadingLabel(const QString& text, QWidget* parent);

}  // namespace tarnwick
