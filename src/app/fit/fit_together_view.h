// What a fit of several DataSets at once found as a whole: its verdict, that of each DataSet, what they share, the statistics of
// all. Knows results; no document.
#pragma once

#include <QWidget>

#include "fit/fit_result.h"

namespace tarnwick {

class FullTable;
class VerdictLabel;
class WrappedLabel;

class FitTogetherView final : public QWidget {
  Q_OBJECT

 public:
  explicit FitTogetherView(QWidget* parent = nullptr);
  void Show(const FitOfSeveral& together);

 private:
  VerdictLabel* verdict_ = nullptr;
  WrappedLabel* shared_ = nullptr;
  FullTable* members_ = nullptr;
  FullTable* figures_ = nullptr;
};

/// A table for labels and values in two columns.
FullTable* MakeFigures(const QString& name, const char* object, QWidget* parent);
void ShowFigures(FullTable& table, const FitResult& result);

}  // namespace tarnwick
