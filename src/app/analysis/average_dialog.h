// The dialog that makes the mean of several DataSets at the X of one of them. Knows what is asked for; what comes of it is
// results/average_series.h's.
#pragma once

#include <vector>

#include "app/analysis/result_dialog.h"

class QListWidget;

namespace tarnwick {

class Txy_Average final : public ResultDialog {
  Q_OBJECT

 public:
  Txy_Average(Document& document, Prompt& prompt, QWidget* parent = nullptr);

 private:
  std::string NameFor(const TxyGraph& graph, const TSeries& source) const override;
  Making Chosen(const NewSeries& wanted, ResultStage stage) override;
  QString Lacking() const override;

  void MakeList();
  void Add(const QString& name);
  /// The graph's DataSets whose names stand in the list.
  std::vector<std::size_t> Averaged(const TxyGraph& graph) const;

  QListWidget* averaged_;
};

}  // namespace tarnwick
