#include "app/analysis/peak_panel.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "app/analysis/series_list.h"
#include "app/fit/fit_work.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "base/whole_file.h"
#include "desk/commands/command.h"
#include "desk/commands/command_actions.h"
#include "desk/document/open_edit.h"
#include "desk/prompts/file_chooser.h"
#include "desk/prompts/file_trouble.h"
#include "desk/widgets/number_box.h"
#include "desk/widgets/text.h"
#include "graph/graph_update.h"
#include "results/fit_texts.h"
#include "results/fitted_model.h"
#include "results/joint_fit.h"
#include "results/peak_fit.h"
#include "results/peak_groups.h"
#include "results/peak_table_text.h"

namespace tarnwick {
namespace {

constexpr int kDigits = 6;
constexpr int kPeakRole = Qt::UserRole + 1;

struct ColumnHead {
  const char* title;
  const char* tip;
};

struct Column {
  ColumnHead head;
  double PeakFigures::*figure;
};

constexpr Column kColumns[] = {
    {{QT_TRANSLATE_NOOP("PeakPanel", "Position"),
      QT_TRANSLATE_NOOP("PeakPanel", "X of the highest point")},
     &PeakFigures::x},
    {{QT_TRANSLATE_NOOP("PeakPanel", "Height"),
      QT_TRANSLATE_NOOP("PeakPanel", "Above the DataSet's base line; without one, above Y = 0")},
     &PeakFigures::height},
    {{QT_TRANSLATE_NOOP("PeakPanel", "Prominence"),
      QT_TRANSLATE_NOOP("PeakPanel",
                        "Above the higher of the valleys that part it from higher ground")},
     &PeakFigures::prominence},
    {{QT_TRANSLATE_NOOP("PeakPanel", "Width"),
      QT_TRANSLATE_NOOP("PeakPanel", "At half the prominence below the top")},
     &PeakFigures::width},
    {{QT_TRANSLATE_NOOP("PeakPanel", "Area"),
      QT_TRANSLATE_NOOP("PeakPanel",
                        "From valley to valley, down to the DataSet's base line; without one, down "
                        "to Y = 0")},
     &PeakFigures::area},
    {{QT_TRANSLATE_NOOP("PeakPanel", "Asymmetry"),
      QT_TRANSLATE_NOOP("PeakPanel", "The part of the width right of the top by that left of it")},
     &PeakFigures::asymmetry},
};

constexpr struct {
  ColumnHead head;
  FittedValue FittedPeak::*value;
} kFitColumns[] = {
    {{QT_TRANSLATE_NOOP("PeakPanel", "Position"),
      QT_TRANSLATE_NOOP("PeakPanel", "X of the fitted peak's top")},
     &FittedPeak::x},
    {{QT_TRANSLATE_NOOP("PeakPanel", "Height"),
      QT_TRANSLATE_NOOP("PeakPanel", "Above the fitted straight line")},
     &FittedPeak::height},
    {{QT_TRANSLATE_NOOP("PeakPanel", "Width"),
      QT_TRANSLATE_NOOP("PeakPanel", "At half the height")},
     &FittedPeak::width},
    {{QT_TRANSLATE_NOOP("PeakPanel", "Area"),
      QT_TRANSLATE_NOOP("PeakPanel", "Of the whole fitted peak, above the fitted straight line")},
     &FittedPeak::area},
};

/// A cell that is sorted by its number.
class NumberItem final : public QTableWidgetItem {
 public:
  NumberItem(double number, const QString& text, std::size_t peak)
      : QTableWidgetItem(text), number_(number) {
    setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setData(kPeakRole, static_cast<qulonglong>(peak));
  }
  bool operator<(const QTableWidgetItem& other) const override {
    return number_ < static_cast<const NumberItem&>(other).number_;
  }

 private:
  double number_;
};

QString NumberText(double number) {
  return IsUndefined(number) ? QString() : ToQt(GeneralText(number, kDigits));
}

QString FittedText(const FittedValue& value) {
  return ToQt(PlusMinusText(value.value, value.error, {}));
}

/// The verdict on the DataSet's last fit, and what it was given for.
QString VerdictOf(const TSeries& series) {
  const LastFit last = series.Fit().Last();
  if (!last.record) return {};
  const FitVerdict& verdict = last.record->result->verdict;
  QString text = ToQt(verdict.summary);
  for (const std::string& note : verdict.notes) text += ' ' + ToQt(note);
  return text;
}

QString AsFittedText(const TSeries& series) {
  return PeakPanel::tr("Peaks of \"%1\" as fitted, with standard errors.")
             .arg(ToQt(series.SeriesName())) +
         ' ' + VerdictOf(series);
}

/// What is fitted stands in the DataSet's model.
PeakGroupsFit FitInGroups(Document& document, TSeries& series) {
  const FitJob job = PrepareFit(series, {.points = FitPointChoice::All});
  PeakGroupsFit fit;
  document.Work().Run({"Fitting Data....", Cancellable::Yes, "Processing..."},
                      [&](Progress& progress) { fit = FitPeakGroups(job, progress); });
  return fit;
}

template <class Columns>
void SetHeads(QTableWidget& table, const Columns& columns) {
  table.setSortingEnabled(false);
  table.clear();
  table.setColumnCount(static_cast<int>(std::size(columns)));
  int place = 0;
  for (const auto& column : columns) {
    auto* head = new QTableWidgetItem(PeakPanel::tr(column.head.title));
    head->setToolTip(PeakPanel::tr(column.head.tip));
    table.setHorizontalHeaderItem(place++, head);
  }
}

}  // namespace

std::unique_ptr<Panel> MakePeakPanel(const PanelParts& parts) {
  return std::make_unique<PeakPanel>(parts.actions);
}

PeakPanel::PeakPanel(CommandActions& actions, QWidget* parent)
    : Panel(parent),
      actions_(actions),
      data_sets_(NewSeriesList()),
      rule_(new QComboBox),
      times_noise_(new NumberBox),
      shape_(new QComboBox),
      table_(new QTableWidget),
      told_(new QLabel) {
  setObjectName("PeakPanel");
  table_->setObjectName("PeakTable");
  table_->setAccessibleName(tr("Peaks"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setAlternatingRowColors(true);
  table_->verticalHeader()->hide();
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  told_->setObjectName("PeaksTold");
  told_->setWordWrap(true);
  auto* column = new QVBoxLayout(this);
  column->addWidget(MakeButtons());
  column->addWidget(table_, 1);
  column->addWidget(told_);
  connect(table_, &QTableWidget::cellClicked, this, &PeakPanel::Look);
  Clear();
}

QWidget* PeakPanel::MakeButtons() {
  auto* line = new QWidget;
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& text, const QString& tip, void (PeakPanel::*press)()) {
    auto* button = new QPushButton(text);
    button->setToolTip(tip);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, press);
    return button;
  };
  rule_->addItems({tr("By prominence"), tr("By neighbours")});
  rule_->setObjectName("PeakRule");
  rule_->setAccessibleName(tr("How peaks are found"));
  rule_->setToolTip(
      tr("How far they rise above the valleys beside them, or above both neighbours "
         "by 0.01 % of the Y axis"));
  times_noise_->setObjectName("TimesNoise");
  times_noise_->setAccessibleName(tr("Least prominence, in noise"));
  times_noise_->setToolTip(tr("Least prominence, in standard deviations of the noise"));
  times_noise_->setRange(0, 1e6);
  times_noise_->setDecimals(1);
  times_noise_->setValue(PeakTableOptions().times_noise);
  times_noise_->setSuffix(tr(" × noise"));
  shape_->setObjectName("PeakShape");
  shape_->setAccessibleName(tr("Shape of the peaks fitted"));
  for (const char* name : kPeakShapeNames) shape_->addItem(tr(name));
  data_sets_->setToolTip(
      tr("The DataSet whose peaks are looked for, the current one of the graph"));
  data_sets_->setMinimumContentsLength(8);
  row->addWidget(data_sets_);
  row->addWidget(rule_);
  row->addWidget(times_noise_);
  add(tr("Fi&nd"), tr("Find and measure the peaks of the current DataSet"), &PeakPanel::Find);
  row->addSpacing(16);
  row->addWidget(shape_);
  fit_peaks_ = add(tr("Fit &These Peaks"),
                   tr("Fit the selected peaks, all where none is selected, on a straight line"),
                   &PeakPanel::FitPeaks);
  need_peaks_ = {
      fit_peaks_,
      add(tr("&Copy"), tr("Copy the table, columns separated by tabs"), &PeakPanel::Copy),
      add(tr("&Save..."), tr("Save the table, in full precision, for other programs"),
          &PeakPanel::Save)};
  row->addStretch();
  connect(data_sets_, &QComboBox::activated, this, [this](int index) {
    if (document_) document_->Graph().SetCurrentSeriesIndex(index);
  });
  connect(rule_, &QComboBox::currentIndexChanged, this,
          [this](int index) { times_noise_->setEnabled(index == 0); });
  return line;
}

void PeakPanel::Follow(Document* document, PanelChange) {
  const TSeries* series = document ? document->Graph().CurrentSeries() : nullptr;
  const std::string name = series ? series->SeriesName() : std::string();
  const bool same = document == document_ && name == data_set_;
  document_ = document;
  data_set_ = name;
  ListDataSets();
  if (same) {
    if (series) Judge(*series);
    return;
  }
  Clear();
  if (series) ShowKeptFit(*series);
}

/// The current one is chosen.
void PeakPanel::ListDataSets() {
  if (document_ && ListsSeriesOf(*data_sets_, document_->Graph())) return;
  data_sets_->clear();
  if (document_) FillSeriesList(*data_sets_, document_->Graph());
  data_sets_->setEnabled(data_sets_->count() > 1);
}

/// A fit of peaks that holds still tells them, also where it came with its file.
void PeakPanel::ShowKeptFit(const TSeries& series) {
  if (!series.Fit().Last().record || !FitChangedText(document_->Graph(), series).empty()) return;
  std::vector<FittedPeak> peaks = FittedPeaks(series);
  if (peaks.empty()) return;
  RememberFit(series);
  ShowFit(std::move(peaks), AsFittedText(series));
  for (QPushButton* button : need_peaks_) button->setEnabled(button != fit_peaks_);
}

void PeakPanel::RememberFit(const TSeries& series) {
  fitted_values_ = series.Fit().Settings().parameters;
  measured_ = series.Points();
}

void PeakPanel::Judge(const TSeries& series) {
  if (peaks_.empty() && !fitted_) return;
  if (fitted_ && series.Fit().Settings().parameters != fitted_values_) {
    if (peaks_.empty()) return Clear();
    ShowPeaks();
    Tell(tr("The fit was taken back or changed since. These are the peaks as they were measured."));
  }
  told_->setText(series.Points().SharesAllWith(measured_)
                     ? told_text_
                     : tr("The points changed since; Find measures their peaks again."));
}

void PeakPanel::Tell(const QString& text) {
  told_text_ = text;
  told_->setText(text);
}

void PeakPanel::Clear() {
  peaks_.clear();
  measured_ = {};
  ShowPeaks();
  Tell(data_set_.empty() ? tr("There is no current DataSet.")
                         : tr("Find looks for the peaks of \"%1\".").arg(ToQt(data_set_)));
}

void PeakPanel::Find() {
  actions_.RunAsCommand([this](CommandContext&) {
    if (!document_) return;
    TxyGraph& graph = document_->Graph();
    PeakTableOptions options;
    options.rule = rule_->currentIndex() == 0 ? PeakRule::Prominence : PeakRule::Neighbours;
    options.times_noise = times_noise_->value();
    TSeries& series = CurrentDataSet(*document_);
    PeakTable table = MakePeakTable(graph, series, options);
    peaks_ = std::move(table.peaks);
    measured_ = series.Points();
    ShowPeaks();
    Tell(ToQt(Counted(static_cast<std::int64_t>(peaks_.size()), "peak") + " of \"" +
              series.SeriesName() + "\". " + table.told));
  });
}

void PeakPanel::ShowPeaks() {
  fitted_ = false;
  SetHeads(*table_, kColumns);
  table_->setRowCount(static_cast<int>(peaks_.size()));
  for (std::size_t i = 0; i < peaks_.size(); ++i) {
    int place = 0;
    for (const Column& column : kColumns) {
      const double number = peaks_[i].*column.figure;
      table_->setItem(static_cast<int>(i), place++, new NumberItem(number, NumberText(number), i));
    }
  }
  table_->setSortingEnabled(true);
  table_->sortByColumn(0, Qt::AscendingOrder);
  for (QPushButton* button : need_peaks_) button->setEnabled(!peaks_.empty());
}

void PeakPanel::ShowFit(std::vector<FittedPeak> peaks, const QString& told) {
  fitted_peaks_ = std::move(peaks);
  const std::vector<FittedPeak>& fitted = fitted_peaks_;
  fitted_ = true;
  SetHeads(*table_, kFitColumns);
  table_->setRowCount(static_cast<int>(fitted.size()));
  for (std::size_t i = 0; i < fitted.size(); ++i) {
    int place = 0;
    for (const auto& column : kFitColumns) {
      const FittedValue value = fitted[i].*column.value;
      table_->setItem(static_cast<int>(i), place++,
                      new NumberItem(value.value, FittedText(value), i));
    }
  }
  table_->setSortingEnabled(true);
  table_->sortByColumn(0, Qt::AscendingOrder);
  Tell(told + ' ' + tr("Find measures the points again."));
}

std::size_t PeakPanel::PeakOf(int row) const {
  return static_cast<std::size_t>(table_->item(row, 0)->data(kPeakRole).toULongLong());
}

std::vector<PeakFigures> PeakPanel::Chosen() const {
  std::vector<PeakFigures> chosen;
  if (!fitted_) {
    for (int row = 0; row < table_->rowCount(); ++row) {
      if (table_->item(row, 0)->isSelected()) chosen.push_back(peaks_[PeakOf(row)]);
    }
  }
  if (chosen.empty()) chosen = peaks_;
  std::ranges::sort(chosen, {}, &PeakFigures::x);
  return chosen;
}

void PeakPanel::Look(int row) {
  if (!document_ || fitted_) return;
  const PeakFigures& peak = peaks_[PeakOf(row)];
  TxyGraph& graph = document_->Graph();
  TAxis& axis = graph.Axis(AxisId::X);
  const double room = peak.right_valley - peak.left_valley;
  const double left = peak.left_valley - room;
  document_->Zoom().Remember(graph);
  const GraphUpdate update(graph);
  axis.SetMax(peak.right_valley + room);
  axis.SetMin(axis.LogScale() && left <= 0 ? peak.left_valley : left);
}

void PeakPanel::Copy() {
  QStringList lines;
  QStringList titles;
  for (int column = 0; column < table_->columnCount(); ++column)
    titles.append(table_->horizontalHeaderItem(column)->text());
  lines.append(titles.join('\t'));
  for (int row = 0; row < table_->rowCount(); ++row) {
    QStringList cells;
    for (int column = 0; column < table_->columnCount(); ++column)
      cells.append(table_->item(row, column)->text());
    lines.append(cells.join('\t'));
  }
  QApplication::clipboard()->setText(lines.join('\n') + '\n');
}

void PeakPanel::FitPeaks() {
  actions_.RunAsCommand([this](CommandContext& context) {
    if (!document_) return;
    OpenEdit step(*document_, "Fit Peaks");
    TSeries& series = CurrentDataSet(*document_);
    const auto shape = static_cast<PeakShape>(shape_->currentIndex());
    const std::vector<PeakFigures> chosen = Chosen();
    TakeFitSettings(series, PeakModel(chosen, shape, series.Fit().Settings()));
    std::vector<FittedPeak> peaks;
    QString told;
    if (chosen.size() <= MostFittedPeaks(shape)) {
      FitAgain(*document_, {.run = {.points = FitPointChoice::All}}, context.prompt);
      peaks = FittedPeaks(series);
      told = AsFittedText(series);
    } else {
      PeakGroupsFit fit = FitInGroups(*document_, series);
      TakeFitSettings(series, fit.model);
      series.Fit().SetStatus(FitStatus::cf_Function);
      peaks = std::move(fit.peaks);
      told = ToQt(fit.verdict.summary + ' ' + fit.told);
      for (const std::string& note : fit.verdict.notes) told += ' ' + ToQt(note);
    }
    AddPeakParts(document_->Graph(), series);
    step.Finish();
    RememberFit(series);
    ShowFit(std::move(peaks), told);
  });
}

void PeakPanel::Save() {
  actions_.RunAsCommand([this](CommandContext& context) {
    const auto chosen = context.chooser.TableToSave(ToPath(ToQt(data_set_) + " peaks.csv"));
    if (!chosen || !MayReplace(*chosen, context.prompt)) return;
    const char separator = LowerAscii(chosen->extension().string()) == ".csv" ? ',' : '\t';
    WriteWholeFile(*chosen, fitted_ ? FittedTableText(fitted_peaks_, separator)
                                    : PeakTableText(peaks_, separator));
  });
}

}  // namespace tarnwick
