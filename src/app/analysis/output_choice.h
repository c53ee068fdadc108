// The box in which a dialog asks what its new DataSet shall be called and drawn against. Knows names that can be had; computes
// nothing.
#pragma once

#include <QGroupBox>

#include "results/new_series.h"

class QLabel;
class QLineEdit;
class QRadioButton;

namespace tarnwick {

class OutputChoice final : public QGroupBox {
  Q_OBJECT

 public:
  explicit OutputChoice(AxisId first, QWidget* parent = nullptr);

  /// Puts a name in place of what is typed.
  void Offer(const std::string& name);
  NewSeries Chosen() const;
  /// Tells beside the name why it cannot be had; an empty text: it can.
  void ShowRefusal(const QString& why);

 signals:
  void edited();

 private:
  QRadioButton* second_;
  QLineEdit* name_;
  QLabel* why_not_;
};

}  // namespace tarnwick
