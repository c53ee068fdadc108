// The window about the paper that is printed on: size, orientation, margins. Works with any printer and with none. Knows
// page layouts; prints nothing.
#pragma once

#include <QDialog>
#include <QPageLayout>
#include <QPageSize>
#include <array>

class QComboBox;
class QDialogButtonBox;
class QDoubleSpinBox;
class QLabel;

namespace tarnwick {

class PageDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit PageDialog(const QPageLayout& page, QWidget* parent = nullptr);

  /// The page as chosen.
  const QPageLayout& Page() const { return page_; }

 private:
  QWidget* MakeMargins();
  void Take();

  QPageLayout page_;
  QPageSize own_size_;  // that of the page given
  QComboBox* size_ = nullptr;
  QComboBox* orientation_ = nullptr;
  std::array<QDoubleSpinBox*, 4> margins_{};  // left, top, right, bottom
  QLabel* why_not_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
};

}  // namespace tarnwick
