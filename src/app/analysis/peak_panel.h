// The panel with the table of the current DataSet's peaks: found, measured, fitted. Knows documents; what a peak is and how it is
// fitted stands in results/.
#pragma once

#include <QPointer>
#include <vector>

#include "desk/document/document.h"
#include "desk/panels/panel.h"
#include "results/peak_fit.h"
#include "results/peak_table.h"

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace tarnwick {

class PeakPanel final : public Panel {
  Q_OBJECT

 public:
  /// `actions` runs what the buttons ask for and outlives the panel.
  explicit PeakPanel(CommandActions& actions, QWidget* parent = nullptr);

  /// The table stays until another DataSet is looked at; what of it no longer holds is told.
  void Follow(Document* document, PanelChange change) override;
  QSize sizeHint() const override { return {640, 220}; }

 private:
  QWidget* MakeButtons();
  void Find();
  void ShowPeaks();
  void ShowFit(std::vector<FittedPeak> fitted, const QString& told);
  void ListDataSets();
  void ShowKeptFit(const TSeries& series);
  void RememberFit(const TSeries& series);
  void Judge(const TSeries& series);
  void Tell(const QString& text);
  void Save();
  void Clear();
  void Look(int row);
  void Copy();
  void FitPeaks();
  /// Those of the selected rows, of all where none is selected; in order of X.
  std::vector<PeakFigures> Chosen() const;
  /// Which peak a row of the sorted table shows.
  std::size_t PeakOf(int row) const;

  CommandActions& actions_;
  QPointer<Document> document_;
  std::string data_set_;  // whose peaks are shown
  std::vector<PeakFigures> peaks_;
  std::vector<FittedPeak> fitted_peaks_;
  bool fitted_ = false;  // the table shows the fit's figures
  PointChain measured_;  // the points, as they were then
  std::vector<ParameterSettings> fitted_values_;
  QString told_text_;  // while the table holds

  QComboBox* data_sets_;
  QComboBox* rule_;
  QDoubleSpinBox* times_noise_;
  QComboBox* shape_;
  QTableWidget* table_;
  QLabel* told_;
  std::vector<QPushButton*> need_peaks_;
  QPushButton* fit_peaks_ = nullptr;
};

std::unique_ptr<Panel> MakePeakPanel(const PanelParts& parts);

}  // namespace tarnwick
