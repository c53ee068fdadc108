#include "app/fit/fit_together_view.h"

#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include "app/fit/verdict_label.h"
#include "base/number_text.h"
#include "desk/widgets/full_table.h"
#include "desk/widgets/text.h"
#include "desk/widgets/wrapped_label.h"
#include "results/fit_texts.h"

namespace tarnwick {
namespace {

constexpr int kDigits = 6;

}  // namespace

FitTogetherView::FitTogetherView(QWidget* parent) : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  verdict_ = new VerdictLabel("FitOfAllVerdict", this);
  shared_ = SentencesLabel(this);
  shared_->setObjectName("FitOfAllShared");
  members_ = new FullTable(tr("DataSets fitted at once"), FullTable::Width::Whole, this);
  members_->setObjectName("FitOfAllMembers");
  figures_ = MakeFigures(tr("Statistics of all DataSets"), "FitOfAllFigures", this);
  column->addWidget(HeadingLabel(tr("All DataSets Together"), this));
  column->addWidget(verdict_);
  column->addWidget(shared_);
  column->addWidget(members_);
  column->addWidget(figures_);
}

void FitTogetherView::Show(const FitOfSeveral& together) {
  verdict_->Show(together.whole);
  shared_->ShowText(ToQt(SharedText(together)));
  members_->setColumnCount(5);
  members_->setHorizontalHeaderLabels({tr("DataSet"), tr("Verdict"), tr("Points"),
                                       ToQt(NameOfSum(together.whole.statistics.weighting)),
                                       tr("R²")});
  members_->setRowCount(static_cast<int>(together.members.size()));
  int row = 0;
  for (const FitOfSeveral::Member& one : together.members) {
    members_->Put(row, 0, ToQt(one.data_set));
    members_->Put(row, 1, tr(KindOfVerdict(one.verdict)))->setToolTip(ToQt(one.verdict.summary));
    members_->Put(row, 2, QString::number(one.points), Qt::AlignRight);
    members_->Put(row, 3, ToQt(GeneralText(one.sum_of_squares, kDigits)), Qt::AlignRight);
    members_->Put(row, 4, ToQt(GeneralText(one.r_squared, kDigits)), Qt::AlignRight);
    ++row;
  }
  members_->FitContents();
  ShowFigures(*figures_, together.whole);
}

FullTable* MakeFigures(const QString& name, const char* object, QWidget* parent) {
  auto* table = new FullTable(name, FullTable::Width::Whole, parent);
  table->setObjectName(object);
  table->horizontalHeader()->hide();
  table->setShowGrid(false);
  return table;
}

void ShowFigures(FullTable& table, const FitResult& result) {
  const auto figures = FigureTexts(result);
  table.setColumnCount(2);
  table.setRowCount(static_cast<int>(figures.size()));
  int row = 0;
  for (const auto& [label, value] : figures) {
    table.Put(row, 0, ToQt(label));
    table.Put(row, 1, ToQt(value), Qt::AlignRight);
    ++row;
  }
  table.FitContents();
}

}  // namespace tarnwick
