// The page of how a model is fitted and how its curve is drawn. Knows settings; no DataSet.
#pragma once

#include <QWidget>

#include "analysis/fits/fit_job.h"
#include "fit/model/fit_settings.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QSpinBox;

namespace tarnwick {

class NumberEdit;

class FitOptionsPage final : public QWidget {
  Q_OBJECT

 public:
  explicit FitOptionsPage(QWidget* parent = nullptr);

  void Put(const FitSettings& model);
  /// Puts the page's values into `model`; false, with nothing put, while a field cannot be used.
  bool Take(FitSettings& model) const;
  /// What of a run is chosen here and not kept with the model.
  FitRunOptions RunOptions() const;

 signals:
  void edited();

 private:
  void AddFitFields(QFormLayout& form);
  void AddWeightFields(QFormLayout& form);
  void AddCurveFields(QFormLayout& form);
  void AddMargin(QFormLayout& form, const QString& caption, QCheckBox*& used, NumberEdit*& margin);
  void ShowColor();
  void ShowTrouble();

  QComboBox* method_ = nullptr;
  QComboBox* weights_ = nullptr;
  QComboBox* errors_ = nullptr;
  QComboBox* loss_ = nullptr;
  NumberEdit* loss_scale_ = nullptr;
  NumberEdit* tolerance_ = nullptr;
  QSpinBox* iterations_ = nullptr;
  QSpinBox* points_ = nullptr;
  QCheckBox* left_used_ = nullptr;
  NumberEdit* left_ = nullptr;
  QCheckBox* right_used_ = nullptr;
  NumberEdit* right_ = nullptr;
  QCheckBox* all_points_ = nullptr;
  QCheckBox* finish_ = nullptr;
  QCheckBox* shown_ = nullptr;
  QPushButton* color_button_ = nullptr;
  QComboBox* style_ = nullptr;
  QSpinBox* width_ = nullptr;
  QLabel* trouble_ = nullptr;
  Color color_;
};

}  // namespace tarnwick
