#include "editors/data/statistics_page.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "data/series/statistics.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

using Row = std::pair<const char*, std::vector<std::optional<double>>>;

std::optional<double> DeviationOf(const StatisticsRecord& record) {
  return record.variance ? std::optional(std::sqrt(*record.variance)) : std::nullopt;
}

std::vector<Row> RowsOf(const TSeries& series) {
  const StatisticsRecord x = series.XStatistics();
  const StatisticsRecord y = series.YStatistics();
  const Extremes extremes = series.GetExtremes();
  const auto both = [&](auto of) -> std::vector<std::optional<double>> { return {of(x), of(y)}; };
  return {{"Points", both([](const auto& r) { return r.count; })},
          {"Minimum", {extremes.x_min, extremes.y_min}},
          {"Lower quintile", both([](const auto& r) { return r.lower_quintile; })},
          {"Lower quartile", both([](const auto& r) { return r.lower_quartile; })},
          {"Median", both([](const auto& r) { return r.median; })},
          {"Upper quartile", both([](const auto& r) { return r.upper_quartile; })},
          {"Upper quintile", both([](const auto& r) { return r.upper_quintile; })},
          {"Maximum", {extremes.x_max, extremes.y_max}},
          {"Mean", both([](const auto& r) { return r.mean; })},
          {"Mode", both([](const auto& r) { return r.mode; })},
          {"Sum", both([](const auto& r) { return r.sum; })},
          {"Variance", both([](const auto& r) { return r.variance; })},
          {"Standard deviation", both(DeviationOf)},
          {"Skew", both([](const auto& r) { return r.skew; })},
          {"Kurtosis", both([](const auto& r) { return r.kurtosis; })}};
}

}  // namespace

StatisticsPage::StatisticsPage(const EditedSeries& series, QWidget* parent)
    : QWidget(parent), series_(series), table_(new QTableWidget(this)) {
  auto* column = new QVBoxLayout(this);
  table_->setObjectName("Statistics");
  table_->setAccessibleName(tr("Figures of X and Y"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  column->addWidget(table_, 1);
  auto* copy = new QPushButton(tr("&Copy"), this);
  copy->setObjectName("CopyStatistics");
  connect(copy, &QPushButton::clicked, this, &StatisticsPage::Copy);
  column->addWidget(copy, 0, Qt::AlignRight);
}

void StatisticsPage::Refresh() {
  const TSeries* const series = series_.Get();
  if (series == nullptr) return table_->setRowCount(0);
  if (table_->rowCount() > 0 && shown_.SharesAllWith(series->Points())) return;
  shown_ = series->Points();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const std::vector<Row> rows = RowsOf(*series);
  QApplication::restoreOverrideCursor();
  table_->setColumnCount(2);
  table_->setHorizontalHeaderLabels({"X", "Y"});
  table_->setRowCount(static_cast<int>(rows.size()));
  for (int row = 0; row < table_->rowCount(); ++row) {
    const auto& [name, values] = rows[static_cast<std::size_t>(row)];
    table_->setVerticalHeaderItem(row, new QTableWidgetItem(tr(name)));
    for (int column = 0; column < 2; ++column) {
      const std::optional<double> value = values[static_cast<std::size_t>(column)];
      auto* item = new QTableWidgetItem(value ? ToQt(GeneralText(*value)) : QString());
      item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      table_->setItem(row, column, item);
    }
  }
}

void StatisticsPage::Copy() const {
  QString text = "\tX\tY\n";
  for (int row = 0; row < table_->rowCount(); ++row) {
    text += table_->verticalHeaderItem(row)->text() + '\t' + table_->item(row, 0)->text() + '\t' +
            table_->item(row, 1)->text() + '\n';
  }
  QApplication::clipboard()->setText(text);
}

}  // namespace tarnwick
