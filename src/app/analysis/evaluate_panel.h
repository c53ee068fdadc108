// The panel that tells what the current DataSet has at an X, or where it has a Y. Knows documents and, while the user picks
// a place,
// canvases; the values are results/evaluation.h's.
#pragma once

#include <QPointer>

#include "desk/document/document.h"
#include "desk/panels/panel.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace tarnwick {

class ElidedLabel;
class FullTable;
struct Evaluated;

class Txy_EValue final : public Panel {
  Q_OBJECT

 public:
  explicit Txy_EValue(QWidget* parent = nullptr);
  ~Txy_EValue() override;

  void Follow(Document* document, PanelChange change) override;
  /// While a place is picked: takes a press of the mouse on a graph.
  bool eventFilter(QObject* watched, QEvent* event) override;
  QSize sizeHint() const override { return {320, 300}; }

 private:
  /// What was asked last.
  enum class Asked { Nothing, X, Y };

  void Ask(Asked what);
  void Show();
  void ShowLines(const std::vector<Evaluated>& lines);
  void Copy();
  void SetPicking(bool on);
  QLineEdit& FieldOf(Asked what) { return what == Asked::X ? *x_ : *y_; }

  QPointer<Document> document_;
  Asked asked_ = Asked::Nothing;
  ElidedLabel* data_set_;
  QLineEdit* x_;
  QLineEdit* y_;
  QPushButton* pick_;
  FullTable* table_;
  QLabel* told_;
  QPushButton* copy_;
};

std::unique_ptr<Panel> MakeEvaluatePanel(const PanelParts& parts);

}  // namespace tarnwick
