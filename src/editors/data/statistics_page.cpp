#include "editors/data/statistics_page.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/quantile.h"
#include "data/import/whole_data.h"
#include "data/points/point_columns.h"
#include "data/series/statistics.h"
#include "desk/widgets/text.h"
#include "desk/widgets/wrapped_label.h"
#include "editors/data/histogram_view.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

constexpr std::array kQuantiles = {
    std::pair{"1 % quantile", 0.01},  std::pair{"5 % quantile", 0.05},
    std::pair{"10 % quantile", 0.1},  std::pair{"90 % quantile", 0.9},
    std::pair{"95 % quantile", 0.95}, std::pair{"99 % quantile", 0.99}};
constexpr int kDigits = 10;  // that are seen; the tip and the copy have all
constexpr int kColumnOfX = 0;
constexpr int kTableHeight = 260;
constexpr int kHistogramHeight = 220;

struct Row {
  const char* name;
  std::vector<std::optional<double>> values;
  const char* how = "";  // it is reckoned, where that is not what everybody takes the word for
};
constexpr const char* kByPlace = QT_TRANSLATE_NOOP(
    "tarnwick::StatisticsPage",
    "The value at that share of the count, in rising order, nothing interpolated");

std::optional<double> DeviationOf(const StatisticsRecord& record) {
  return record.variance ? std::optional(std::sqrt(*record.variance)) : std::nullopt;
}

std::vector<Row> RowsOf(const TSeries& series) {
  const StatisticsRecord x = series.XStatistics();
  const StatisticsRecord y = series.YStatistics();
  std::vector<double> x_values = FiniteOf(XValues(series.Points()));
  std::vector<double> y_values = FiniteOf(YValues(series.Points()));
  const auto share = [&](double p) -> std::vector<std::optional<double>> {
    const auto of = [p](std::vector<double>& values) {
      return values.empty() ? std::nullopt : std::optional(QuantileOf(values, p));
    };
    return {of(x_values), of(y_values)};
  };
  const auto both = [&](auto of) -> std::vector<std::optional<double>> { return {of(x), of(y)}; };
  std::vector<Row> rows = {
      {"Points", both([](const auto& r) { return r.count; })},
      {"Minimum", share(0)},
      {"Lower quintile", both([](const auto& r) { return r.lower_quintile; }), kByPlace},
      {"Lower quartile", both([](const auto& r) { return r.lower_quartile; }), kByPlace},
      {"Median", both([](const auto& r) { return r.median; }), kByPlace},
      {"Upper quartile", both([](const auto& r) { return r.upper_quartile; }), kByPlace},
      {"Upper quintile", both([](const auto& r) { return r.upper_quintile; }), kByPlace},
      {"Maximum", share(1)},
      {"Mean", both([](const auto& r) { return r.mean; })},
      {"Mode", both([](const auto& r) { return r.mode; }),
       QT_TRANSLATE_NOOP("tarnwick::StatisticsPage", "Where most values lie within the tolerance")},
      {"Sum", both([](const auto& r) { return r.sum; })},
      {"Variance", both([](const auto& r) { return r.variance; })},
      {"Standard deviation", both(DeviationOf)},
      {"Skew", both([](const auto& r) { return r.skew; }),
       QT_TRANSLATE_NOOP("tarnwick::StatisticsPage",
                         "Σ(v - mean)³ / (n · variance³): not the moment "
                         "coefficient, which divides by variance^1.5")},
      {"Kurtosis", both([](const auto& r) { return r.kurtosis; }),
       QT_TRANSLATE_NOOP("tarnwick::StatisticsPage",
                         "Σ(v - mean)⁴ / (n · (Σ(v - mean)²)²) - 3: not the "
                         "excess, which multiplies the first part by n²")}};
  for (const auto& [name, p] : kQuantiles) rows.push_back({name, share(p)});
  return rows;
}

}  // namespace

StatisticsPage::StatisticsPage(const EditedSeries& series, QWidget* parent)
    : QWidget(parent), series_(series) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 6, 0, 0);
  some_rows_ = SentencesLabel(this);
  some_rows_->setObjectName("SomeRows");
  column->addWidget(some_rows_);
  auto* halves = new QSplitter(Qt::Vertical, this);
  table_ = new QTableWidget(halves);
  table_->setObjectName("Statistics");
  table_->setAccessibleName(tr("Figures of X and Y"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  auto* lower = new QWidget(halves);
  auto* under = new QVBoxLayout(lower);
  under->setContentsMargins(0, 6, 0, 0);
  under->addWidget(BuildChoice());
  view_ = new HistogramView(lower);
  under->addWidget(view_, 1);
  halves->setSizes({kTableHeight, kHistogramHeight});
  column->addWidget(halves, 1);
  auto* copy = new QPushButton(tr("&Copy"), this);
  copy->setObjectName("CopyStatistics");
  copy->setToolTip(tr("Copy the figures and the bins of the histogram as text"));
  connect(copy, &QPushButton::clicked, this, &StatisticsPage::Copy);
  column->addWidget(copy, 0, Qt::AlignRight);
}

QWidget* StatisticsPage::BuildChoice() {
  auto* bar = new QWidget(this);
  auto* line = new QHBoxLayout(bar);
  line->setContentsMargins(0, 0, 0, 0);
  auto* of = new QLabel(tr("Histo&gram of"), bar);
  of_ = new QComboBox(bar);
  of_->setObjectName("HistogramOf");
  of_->addItems({"X", "Y"});
  of_->setCurrentIndex(1 - kColumnOfX);
  of->setBuddy(of_);
  auto* bins = new QLabel(tr("&Bins"), bar);
  bins_ = new QSpinBox(bar);
  bins_->setObjectName("HistogramBins");
  bins_->setRange(0, static_cast<int>(kMostBins));
  bins_->setSpecialValueText(tr("Automatic"));
  bins_->setKeyboardTracking(false);
  bins->setBuddy(bins_);
  for (QWidget* widget : std::initializer_list<QWidget*>{of, of_, bins, bins_}) {
    line->addWidget(widget);
  }
  line->addStretch();
  connect(of_, &QComboBox::currentIndexChanged, this, &StatisticsPage::ShowHistogram);
  connect(bins_, &QSpinBox::valueChanged, this, &StatisticsPage::ShowHistogram);
  return bar;
}

void StatisticsPage::Refresh() {
  const TSeries* const series = series_.Get();
  const std::string some = series == nullptr ? "" : SomeRowsText(series->Source());
  some_rows_->ShowText(tr("A part of the source: %1.").arg(ToQt(some)));
  some_rows_->setVisible(!some.empty());
  if (series == nullptr) {
    table_->setRowCount(0);
    shown_ = {};
    return ShowHistogram();
  }
  if (table_->rowCount() > 0 && shown_.SharesAllWith(series->Points())) return;
  shown_ = series->Points();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  ShowFigures(*series);
  ShowHistogram();
  QApplication::restoreOverrideCursor();
}

void StatisticsPage::ShowFigures(const TSeries& series) {
  const std::vector<Row> rows = RowsOf(series);
  table_->setColumnCount(2);
  table_->setHorizontalHeaderLabels({"X", "Y"});
  table_->setRowCount(static_cast<int>(rows.size()));
  for (int row = 0; row < table_->rowCount(); ++row) {
    const auto& [name, values, how] = rows[static_cast<std::size_t>(row)];
    auto* head = new QTableWidgetItem(tr(name));
    head->setToolTip(tr(how));
    table_->setVerticalHeaderItem(row, head);
    for (int column = 0; column < 2; ++column) {
      const std::optional<double> value = values[static_cast<std::size_t>(column)];
      auto* item = new QTableWidgetItem(value ? ToQt(GeneralText(*value, kDigits)) : QString());
      item->setToolTip(value ? ToQt(GeneralText(*value)) : QString());
      item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      table_->setItem(row, column, item);
    }
  }
}

void StatisticsPage::ShowHistogram() {
  const bool of_x = of_->currentIndex() == kColumnOfX;
  histogram_ = CountInBins(of_x ? XValues(shown_) : YValues(shown_),
                           static_cast<std::size_t>(bins_->value()));
  const TSeries* const series = series_.Get();
  if (series == nullptr) return view_->Show(histogram_, {}, HistogramView::Values::Numbers);
  const TAxis& axis = series_.GetDocument()->Graph().Axis(of_x ? AxisId::X : YAxisOf(*series));
  const QString title = of_x ? ToQt(axis.State().Title) : ToQt(series->SeriesName());
  view_->Show(histogram_, title.isEmpty() ? of_->currentText() : title,
              axis.ShowAsTime() ? HistogramView::Values::Moments : HistogramView::Values::Numbers);
}

void StatisticsPage::Copy() const {
  QString text = "\tX\tY\n";
  for (int row = 0; row < table_->rowCount(); ++row) {
    text += table_->verticalHeaderItem(row)->text() + '\t' + table_->item(row, 0)->toolTip() +
            '\t' + table_->item(row, 1)->toolTip() + '\n';
  }
  text += '\n' + tr("%1 from\tto\tcount").arg(of_->currentText()) + '\n';
  for (std::size_t bin = 0; bin < histogram_.counts.size(); ++bin) {
    text += ToQt(ShortestText(histogram_.Edge(bin))) + '\t' +
            ToQt(ShortestText(histogram_.Edge(bin + 1))) + '\t' +
            QString::number(histogram_.counts[bin]) + '\n';
  }
  QApplication::clipboard()->setText(text);
}

}  // namespace tarnwick
