// The dialog of any tool that makes a DataSet, made from the tool's row. Knows what is asked for; what comes of it is the tool's.
#pragma once

#include <vector>

#include "app/analysis/result_dialog.h"
#include "results/tools/tool.h"

class QCheckBox;
class QComboBox;

namespace tarnwick {

class FieldForm;

class ToolDialog final : public ResultDialog {
  Q_OBJECT

 public:
  ToolDialog(Document& document, const Tool& tool, Prompt& prompt, QWidget* parent = nullptr);

 private:
  std::string NameFor(const TxyGraph& graph, const TSeries& source) const override;
  Making Chosen(const NewSeries& wanted, ResultStage stage) override;
  QString Lacking() const override;
  void Follow(const TSeries& source) override;
  void AddOthers(Document& document);
  void AddSettings();
  void TakeSetting(std::size_t row);
  void ShowSettings();

  const Tool& tool_;
  ToolSettings settings_;
  std::vector<QComboBox*> others_;
  FieldForm* form_ = nullptr;
  QCheckBox* hide_source_ = nullptr;  // where the new X leaves no room for the source
};

}  // namespace tarnwick
