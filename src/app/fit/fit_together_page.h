// The page of a fit over several DataSets: which of them, and which parameters have one value in all. Knows names; no DataSet.
#pragma once

#include <QStringList>
#include <QWidget>

#include "app/fit/fit_request.h"
#include "fit/model/fit_settings.h"

class QCheckBox;
class QLabel;

namespace tarnwick {

class CheckList;

class FitTogetherPage final : public QWidget {
  Q_OBJECT

 public:
  /// `current` stands among the names of the graph's DataSets and always takes part.
  FitTogetherPage(const QStringList& data_sets, int current, QWidget* parent = nullptr);

  /// Offers the model's varied parameters for sharing; what is chosen stays chosen by its name.
  void PutParameters(const FitSettings& model);
  void Take(FitRequest& request) const;

 private:
  QWidget* MakeDataSets(const QStringList& data_sets, int current);
  QWidget* MakeParameters();
  void Follow();

  CheckList* data_sets_ = nullptr;
  CheckList* parameters_ = nullptr;
  QCheckBox* same_model_ = nullptr;
  QLabel* summary_ = nullptr;
};

}  // namespace tarnwick
