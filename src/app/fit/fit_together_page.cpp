#include "app/fit/fit_together_page.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "desk/widgets/check_list.h"
#include "desk/widgets/text.h"

namespace tarnwick {
FitTogetherPage::FitTogetherPage(const QStringList& data_sets, int current, QWidget* parent)
    : QWidget(parent) {
  auto* lists = new QHBoxLayout;
  lists->addWidget(MakeDataSets(data_sets, current), 1);
  lists->addWidget(MakeParameters(), 1);
  same_model_ =
      new QCheckBox(tr("The other DataSets ta&ke this function, in place of their own"), this);
  same_model_->setObjectName("SameFunction");
  same_model_->setChecked(true);
  summary_ = new QLabel(this);
  summary_->setObjectName("TogetherSummary");
  summary_->setWordWrap(true);
  summary_->setTextFormat(Qt::PlainText);
  auto* column = new QVBoxLayout(this);
  column->addLayout(lists, 1);
  column->addWidget(same_model_);
  column->addWidget(summary_);
  connect(data_sets_, &CheckList::itemChanged, this, &FitTogetherPage::Follow);
  connect(parameters_, &CheckList::itemChanged, this, &FitTogetherPage::Follow);
  Follow();
}

QWidget* FitTogetherPage::MakeDataSets(const QStringList& data_sets, int current) {
  auto* box = new QGroupBox(tr("DataSets fitted at once"), this);
  data_sets_ = new CheckList("FittedTogether", box->title(), box);
  for (int i = 0; i < data_sets.size(); ++i) {
    const bool own = i == current;
    QListWidgetItem* const item = data_sets_->Add(data_sets[i], own ? Qt::Checked : Qt::Unchecked);
    item->setData(Qt::UserRole, i);
    if (!own) continue;
    item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
    item->setToolTip(tr("The current DataSet always takes part"));
  }
  auto* column = new QVBoxLayout(box);
  column->addWidget(data_sets_);
  return box;
}

QWidget* FitTogetherPage::MakeParameters() {
  auto* box = new QGroupBox(tr("Parameters with one value in all"), this);
  parameters_ = new CheckList("SharedParameters", box->title(), box);
  auto* column = new QVBoxLayout(box);
  column->addWidget(parameters_);
  return box;
}

void FitTogetherPage::PutParameters(const FitSettings& model) {
  QStringList names;
  for (const ParameterSettings& one : model.parameters) {
    if (one.Vary) names.append(ToQt(one.Name));
  }
  QStringList shown;
  for (int row = 0; row < parameters_->count(); ++row) shown.append(parameters_->item(row)->text());
  if (names == shown) return;
  const QStringList chosen = parameters_->Chosen();
  parameters_->clear();
  for (const QString& name : names)
    parameters_->Add(name, chosen.contains(name) ? Qt::Checked : Qt::Unchecked);
  Follow();
}

void FitTogetherPage::Take(FitRequest& request) const {
  for (int row = 0; row < data_sets_->count(); ++row) {
    const QListWidgetItem& item = *data_sets_->item(row);
    const bool own = !item.flags().testFlag(Qt::ItemIsUserCheckable);
    if (!own && data_sets_->IsChosen(row))
      request.beside.push_back(item.data(Qt::UserRole).toULongLong());
  }
  if (request.beside.empty()) return;
  request.models = same_model_->isChecked() ? JointModels::OfCurrent : JointModels::Own;
  for (const QString& name : parameters_->Chosen()) request.shared.push_back(name.toStdString());
}

/// Says what Fit will do.
void FitTogetherPage::Follow() {
  const QStringList together = data_sets_->Chosen();
  const bool alone = together.size() < 2;
  parameters_->setEnabled(!alone);
  same_model_->setEnabled(!alone);
  if (data_sets_->count() < 2) {
    summary_->setText(tr("The graph has no other DataSet to fit at once."));
  } else if (alone) {
    summary_->setText(tr("Fit takes the current DataSet alone. Choose others to fit all at once."));
  } else {
    const QStringList shared = parameters_->Chosen();
    summary_->setText(tr("Fit takes %1 DataSets at once. ").arg(together.size()) +
                      (shared.isEmpty()
                           ? tr("No parameter is shared: each DataSet gets values of its own.")
                           : tr("Shared by all: %1; the other parameters have a value in each.")
                                 .arg(shared.join(", "))));
  }
}

}  // namespace tarnwick
