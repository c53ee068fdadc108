#include "app/analysis/average_dialog.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "desk/widgets/text.h"
#include "graph/xy_graph.h"
#include "results/average_series.h"

namespace tarnwick {
namespace {

constexpr ResultTexts kTexts = {"Txy_Average", "Average DataSets", "Average", "Source Data Sets"};

QList<QListWidgetItem*> Find(const QListWidget& list, const QString& name) {
  return list.findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
}

QPushButton* AddButton(QVBoxLayout& column, const QString& text, const QString& tip) {
  auto* button = new QPushButton(text);
  button->setAccessibleName(tip);
  button->setToolTip(tip);
  button->setAutoDefault(false);
  column.addWidget(button);
  return button;
}

}  // namespace

Txy_Average::Txy_Average(Document& document, Prompt& prompt, QWidget* parent)
    : ResultDialog(document, kTexts, AxisId::Y, prompt, parent), averaged_(new QListWidget) {
  MakeList();
  OfferName();
}

void Txy_Average::MakeList() {
  averaged_->setObjectName("ListBox1");
  averaged_->setAccessibleName(tr("DataSets to average"));
  auto* buttons = new QVBoxLayout;
  const auto changing = [this](auto change) {
    return [this, change] {
      change();
      Refresh();
    };
  };
  connect(AddButton(*buttons, ">>", tr("Add the chosen DataSet")), &QPushButton::clicked, this,
          changing([this] { Add(SourceName()); }));
  connect(AddButton(*buttons, "<<", tr("Remove the selected entry")), &QPushButton::clicked, this,
          changing([this] { delete averaged_->takeItem(averaged_->currentRow()); }));
  connect(AddButton(*buttons, tr("All"), tr("Add every DataSet")), &QPushButton::clicked, this,
          changing([this] {
            for (const QString& name : SourceNames()) Add(name);
          }));
  connect(AddButton(*buttons, "X", tr("Empty the list")), &QPushButton::clicked, this,
          changing([this] { averaged_->clear(); }));
  buttons->addStretch();
  auto* row = new QHBoxLayout;
  row->addLayout(buttons);
  row->addWidget(averaged_, 1);
  SourceBox().addLayout(row);
}

void Txy_Average::Add(const QString& name) {
  if (Find(*averaged_, name).isEmpty()) averaged_->addItem(name);
}

std::vector<std::size_t> Txy_Average::Averaged(const TxyGraph& graph) const {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (!Find(*averaged_, ToQt(graph.Series(i).SeriesName())).isEmpty()) indices.push_back(i);
  }
  return indices;
}

std::string Txy_Average::NameFor(const TxyGraph& graph, const TSeries& source) const {
  return AverageName(graph, source);
}

QString Txy_Average::Lacking() const {
  return averaged_->count() > 0 ? QString() : tr("Add the DataSets to average, with >> or All.");
}

Making Txy_Average::Chosen(const NewSeries& wanted, ResultStage) {
  return
      [wanted, averaged = Averaged(Graph())](TxyGraph& graph, TSeries& source, const CancelPoint&) {
        return AddAverage(graph, source, averaged, wanted).told;
      };
}

}  // namespace tarnwick
