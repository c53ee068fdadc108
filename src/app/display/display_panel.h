// The display panel: an indicator for every parameter shown, laid out in a grid, their texts made on a thread of their own.
// Knows which parameters there are from displayed_parameters.h.
#pragma once

#include <memory>
#include <vector>

#include "app/display/close_display_thread.h"
#include "app/display/displayed_parameters.h"
#include "desk/panels/panel.h"
#include "desk/work/mailbox.h"

class QLabel;
class QScrollArea;

namespace tarnwick {

class TIndicator;

class TDisplayPanel final : public Panel {
  Q_OBJECT

 public:
  explicit TDisplayPanel(const PanelParts& parts, QWidget* parent = nullptr);

  /// Builds the indicators anew where other parameters are to be shown, and has their values shown. Nothing while hidden.
  void Follow(Document* document, PanelChange change) override;
  QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowFitting(Document* document, std::size_t series, const std::vector<double>& values);
  /// The indicators that there now are to be.
  void TakeParameters();
  void Rebuild();
  void LayOut();
  void ShowTexts(const std::vector<std::string>& texts, int version);
  void EditValue(const DisplayedParameter& parameter);

  PanelParts parts_;
  QScrollArea* scroll_;
  QLabel* hint_;
  std::vector<DisplayedParameter> shown_;
  std::vector<TIndicator*> indicators_;    // one for each
  std::vector<DisplayedValue> displayed_;  // their values, those of a fit that runs among them
  int version_ = 0;
  Mailbox texts_;
  std::unique_ptr<TCloseDisplayThread> thread_;  // last: it uses the mailbox
};

std::unique_ptr<Panel> MakeDisplayPanel(const PanelParts& parts);

}  // namespace tarnwick
