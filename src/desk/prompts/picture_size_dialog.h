// Asks how large a picture is to be, in pixels or millimetres, and how fine. Knows sizes only, no graph.
#pragma once

#include <QDialog>
#include <QSizeF>

#include "graph/pictures/picture_export.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QDoubleSpinBox;
class QLabel;
class QSpinBox;

namespace tarnwick {

/// The picture keeps its size on paper when the resolution changes: the same picture, finer. Locked sides keep their ratio.
class PictureSizeDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit PictureSizeDialog(const PictureOptions& proposal, QWidget* parent = nullptr);
  /// What the fields say; valid once the dialog was accepted.
  PictureOptions Options() const;

 private:
  enum class Unit { Pixels, Millimetres };
  Unit ShownUnit() const;
  double InUnit(double millimetres) const;
  double FromUnit(double shown) const;
  void ChangeWidth(double shown);
  void ChangeHeight(double shown);
  void ShowSize();
  void ShowOutcome();

  QDoubleSpinBox* width_;
  QDoubleSpinBox* height_;
  QComboBox* unit_;
  QSpinBox* resolution_;
  QCheckBox* lock_;
  QLabel* outcome_;
  QDialogButtonBox* buttons_;
  QSizeF millimetres_;
  double ratio_;  // width by height, while locked
};

}  // namespace tarnwick
