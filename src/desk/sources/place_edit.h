// The widget that says where the data of one kind of source stand. Knows the place in a description; opens nothing by itself.
#pragma once

#include <QWidget>
#include <optional>

#include "data/ds_info.h"

namespace tarnwick {

class PlaceEdit : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  /// Shows the place of `info`, which is of the edit's kind or new. Emits nothing.
  virtual void Show(const TDSInfo& info) = 0;
  /// Writes what is typed into the place of `info`: its DatasourceInfo and TablePart, and settings of the kind alone. Answers
  /// what keeps it from being a place; `info` is then as it was.
  virtual std::optional<QString> Take(TDSInfo& info) const = 0;

 signals:
  /// The user changed something.
  void edited();
};

}  // namespace tarnwick
