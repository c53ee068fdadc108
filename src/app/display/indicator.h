// One read-out of the display panel: a parameter's name, value and DataSet. Knows texts, no document; the panel says what
// it stands for.
#pragma once

#include <QAbstractButton>

namespace tarnwick {

struct DisplayGrid;

/// What an indicator shows beside the value.
struct IndicatorLabels {
  QString parameter;  ///< with its units
  QString data_set;   ///< with its graph
  bool operator==(const IndicatorLabels&) const = default;
};

class TIndicator final : public QAbstractButton {
  Q_OBJECT

 public:
  TIndicator(IndicatorLabels labels, QWidget* parent);
  void ShowValue(const QString& value);
  /// Takes the place and font sizes that the grid has for indicator `number`.
  void TakePlace(const DisplayGrid& grid, int number);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont ValueFont(int room) const;

  IndicatorLabels labels_;
  int value_font_ = 0;
  int second_font_ = 0;
};

}  // namespace tarnwick
