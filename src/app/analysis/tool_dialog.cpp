#include "app/analysis/tool_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QSpinBox>
#include <QVBoxLayout>

#include "app/analysis/series_list.h"
#include "base/error.h"
#include "desk/document/document.h"
#include "desk/fields/field_form.h"
#include "desk/fields/field_widget.h"
#include "desk/widgets/text.h"
#include "results/made_series.h"

namespace tarnwick {
namespace {

constexpr int kWidth = 64;  // characters: the longest choices are read whole

ResultTexts TextsOf(const Tool& tool) {
  return {tool.name.data(), tool.caption.data(), tool.caption.data()};
}

std::vector<FieldRow> RowsOfTool(const Tool& tool) {
  std::vector<FieldRow> rows;
  for (const ToolSetting& setting : tool.settings)
    rows.push_back({0, setting.key, {setting.caption, "Settings", setting.control}});
  return rows;
}

}  // namespace

ToolDialog::ToolDialog(Document& document, const Tool& tool, Prompt& prompt, QWidget* parent)
    : ResultDialog(document, TextsOf(tool), tool.axis, prompt, parent),
      tool_(tool),
      settings_(tool.settings) {
  AddOthers(document);
  if (!tool.settings.empty()) AddSettings();
  if (tool.x == ResultX::Own) {
    hide_source_ = new QCheckBox(tr("Hide Source When Finished"));
    hide_source_->setObjectName("cbx_HideSource");
    hide_source_->setChecked(true);
    SourceBox().addWidget(hide_source_);
  }
  OfferName();
}

void ToolDialog::AddOthers(Document& document) {
  if (tool_.others.empty()) return;
  auto* lines = new QFormLayout;
  SourceBox().addLayout(lines);
  for (const OtherInput& other : tool_.others) {
    QComboBox* list = MakeSeriesList(document.Graph());
    list->setObjectName(ToQt(other.key));
    list->setAccessibleName(ToQt(other.caption));
    if (other.need == OtherInput::Need::MayLack) {
      list->addItem(tr("None"));
    }
    // The first is another one than the source, as far as there is one.
    const bool another = others_.empty() && document.Graph().SeriesCount() > 1;
    list->setCurrentIndex(another ? (list->currentIndex() == 0 ? 1 : 0) : list->count() - 1);
    lines->addRow(ToQt(other.caption), list);
    connect(list, &QComboBox::currentIndexChanged, this, &ToolDialog::Refresh);
    others_.push_back(list);
  }
}

void ToolDialog::AddSettings() {
  form_ = new FieldForm(RowsOfTool(tool_), "k");
  form_->setMinimumWidth(form_->fontMetrics().averageCharWidth() * kWidth);
  for (std::size_t row = 0; row < form_->Size(); ++row) {
    auto* box = qobject_cast<QSpinBox*>(form_->Field(row)->Control());
    if (box) box->setSingleStep(tool_.settings[row].step);
  }
  Options().addRow(form_);
  connect(form_, &FieldForm::edited, this, &ToolDialog::TakeSetting);
}

void ToolDialog::TakeSetting(std::size_t row) {
  FieldWidget& field = *form_->Field(row);
  if (field.Typed()) {
    try {
      settings_.Set(row, *field.Typed());
      field.ShowRemark({});
    } catch (const Error& error) {
      field.ShowRemark(FieldRemark::Refused(error.what()));
    }
  }
  Refresh();
  ShowSettings();
}

void ToolDialog::ShowSettings() {
  for (std::size_t row = 0; form_ && row < form_->Size(); ++row) {
    const ToolSetting& setting = tool_.settings[row];
    FieldWidget& field = *form_->Field(row);
    if (!field.IsRefused()) field.Show(settings_.At(row), {});
    const bool matters = !setting.matters || setting.matters(settings_);
    field.SetIdle(matters ? QString() : tr("Without effect with the other settings"));
  }
}

void ToolDialog::Follow(const TSeries& source) {
  ToolSettings fresh(tool_.settings);
  if (tool_.suggest) tool_.suggest(source, fresh);
  for (std::size_t row = 0; row < tool_.settings.size(); ++row) {
    const auto* initial = std::get_if<double>(&tool_.settings[row].initial);
    if (initial && IsUndefined(*initial)) settings_.Set(row, fresh.At(row));
  }
  ShowSettings();
}

QString ToolDialog::Lacking() const {
  for (std::size_t row = 0; form_ && row < form_->Size(); ++row) {
    if (form_->Field(row)->IsRefused())
      return tr("\"%1\" is no value yet.").arg(ToQt(tool_.settings[row].caption));
  }
  return {};
}

std::string ToolDialog::NameFor(const TxyGraph& graph, const TSeries& source) const {
  return MadeName(graph, source, tool_);
}

Making ToolDialog::Chosen(const NewSeries& wanted, ResultStage) {
  std::vector<std::size_t> others;
  for (std::size_t i = 0; i < others_.size(); ++i) {
    const QComboBox& list = *others_[i];
    const bool may_lack = tool_.others[i].need == OtherInput::Need::MayLack;
    if (may_lack && list.currentIndex() == list.count() - 1) break;
    ChosenSeries(Graph(), list);  // which must be there
    others.push_back(static_cast<std::size_t>(list.currentIndex()));
  }
  const bool hides = hide_source_ && hide_source_->isChecked();
  return [&tool = tool_, settings = settings_, wanted, others, hides](
             TxyGraph& graph, TSeries& source, const CancelPoint& cancel) {
    ToolInput input{.series = {&source}, .settings = settings, .cancel = cancel};
    for (const std::size_t other : others) input.series.push_back(&graph.Series(other));
    const MadeSeries made = AddMade(graph, tool, std::move(input), wanted);
    if (hides) HideSource(graph, source, made.series, tool.x);
    NameInLegend(graph);
    return made.told;
  };
}

}  // namespace tarnwick
