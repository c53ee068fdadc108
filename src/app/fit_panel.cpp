#include "app/fit_panel.h"

#include <QApplication>
#include <QClipboard>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>

#include "app/command.h"
#include "app/command_actions.h"
#include "app/document.h"
#include "app/fit_outcome.h"
#include "app/fit_texts.h"
#include "app/fit_work.h"
#include "app/ink_icon.h"
#include "app/text.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr int kIconSize = 26;
/// Correlations beyond this are shown in bold.
constexpr double kStrong = 0.95;

QLabel* Wrapped(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

QLabel* Heading(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

QTableWidget* Table(const QString& name, QWidget* parent) {
  auto* table = new QTableWidget(parent);
  table->setAccessibleName(name);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionMode(QAbstractItemView::ContiguousSelection);
  table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  table->verticalHeader()->hide();
  table->horizontalHeader()->setHighlightSections(false);
  table->setAlternatingRowColors(true);
  table->setTabKeyNavigation(false);
  return table;
}

QTableWidgetItem* Put(QTableWidget& table, int row, int column, const QString& text,
                      Qt::Alignment alignment = Qt::AlignLeft) {
  auto* item = new QTableWidgetItem(text);
  item->setTextAlignment(alignment | Qt::AlignVCenter);
  table.setItem(row, column, item);
  return item;
}

/// The table as high as its rows; what is around it scrolls.
void FitHeight(QTableWidget& table) {
  table.resizeColumnsToContents();
  table.resizeRowsToContents();
  int height = 2 * table.frameWidth();
  if (!table.horizontalHeader()->isHidden())
    height += table.horizontalHeader()->sizeHint().height();
  for (int row = 0; row < table.rowCount(); ++row) height += table.rowHeight(row);
  const bool scrolls = table.horizontalScrollBarPolicy() != Qt::ScrollBarAlwaysOff &&
                       table.horizontalHeader()->length() > table.viewport()->width();
  if (scrolls) height += table.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  table.setFixedHeight(height);
}

const char* IconOf(const FitResult& result) {
  if (Failed(result.outcome.why)) return "verdict-failed";
  return result.verdict.trustworthy ? "verdict-good" : "verdict-doubtful";
}

const char* NameOfIcon(const FitResult& result) {
  if (Failed(result.outcome.why)) return "failed";
  return result.verdict.trustworthy ? "good" : "doubtful";
}

}  // namespace

FitPanel::FitPanel(CommandActions& actions, QWidget* parent) : QWidget(parent), actions_(actions) {
  setObjectName("FitPanel");
  auto* column = new QVBoxLayout(this);
  hint_ = Wrapped(this);
  hint_->setAlignment(Qt::AlignTop);
  hint_->setText(
      tr("The current DataSet has not been fitted.\n\nChoose a function in the menu Data, Curve "
         "Fitting, then Show Final Curve."));
  outdated_ = Heading(tr("Values changed since this fit."), this);
  outdated_->setObjectName("FitOutdated");
  column->addWidget(outdated_);
  column->addWidget(hint_, 1);
  auto* scroll = new QScrollArea(this);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidget(MakeContent());
  content_ = scroll;
  column->addWidget(scroll, 1);
  buttons_ = MakeButtons();
  column->addWidget(buttons_);
  SetState(State::Nothing);
}

QWidget* FitPanel::MakeContent() {
  auto* content = new QWidget(this);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 4, 0);
  auto* verdict_row = new QHBoxLayout;
  verdict_icon_ = new QLabel(content);
  verdict_icon_->setObjectName("FitVerdictIcon");
  verdict_ = Wrapped(content);
  verdict_->setObjectName("FitVerdict");
  QFont bold = verdict_->font();
  bold.setBold(true);
  verdict_->setFont(bold);
  verdict_row->addWidget(verdict_icon_, 0, Qt::AlignTop);
  verdict_row->addWidget(verdict_, 1);
  notes_ = Wrapped(content);
  parameters_ = Table(tr("Parameters"), content);
  parameters_->setObjectName("FitParameters");
  figures_ = Table(tr("Statistics"), content);
  figures_->setObjectName("FitFigures");
  figures_->horizontalHeader()->hide();
  figures_->setShowGrid(false);
  figures_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  correlations_title_ = Heading(tr("Correlations"), content);
  correlations_ = Table(tr("Correlations"), content);
  column->addLayout(verdict_row);
  column->addWidget(notes_);
  column->addWidget(Heading(tr("Parameters"), content));
  column->addWidget(parameters_);
  auto* model = new QLabel(tr("Errors: %1").arg(ToQt(kErrorModel)), content);
  model->setWordWrap(true);
  model->setForegroundRole(QPalette::PlaceholderText);
  column->addWidget(model);
  column->addWidget(Heading(tr("Statistics"), content));
  column->addWidget(figures_);
  column->addWidget(correlations_title_);
  column->addWidget(correlations_);
  column->addStretch(1);
  return content;
}

QPushButton* FitPanel::AddButton(QGridLayout& grid, int row, int column, const QString& text,
                                 const QString& tip) {
  auto* button = new QPushButton(text, this);
  button->setToolTip(tip);
  grid.addWidget(button, row, column);
  return button;
}

QWidget* FitPanel::MakeButtons() {
  auto* box = new QWidget(this);
  auto* grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  all_points_ =
      AddButton(*grid, 0, 0, tr("Use &All Points"), tr("Fit again without thinning the points"));
  finish_ = AddButton(*grid, 0, 1, tr("Finish with &Newton Step"),
                      tr("Fit on from here by the Newton-type method"));
  auto* text = AddButton(*grid, 1, 0, tr("Copy as &Text"), tr("Copy everything as it is read"));
  auto* table =
      AddButton(*grid, 1, 1, tr("Copy as Ta&ble"), tr("Copy all digits for a spreadsheet"));
  auto* residuals = AddButton(*grid, 2, 0, tr("&Residuals"),
                              tr("Data less model, as a new DataSet against the second Y axis"));
  auto* print =
      AddButton(*grid, 2, 1, tr("&Print on Graph"), tr("Write the fitted parameters on the graph"));
  bands_ = AddButton(*grid, 3, 0, tr("&Confidence Bands"),
                     tr("Confidence and prediction bands as DataSets"));
  level_ = new QDoubleSpinBox(box);
  level_->setRange(50, 99.99);
  level_->setDecimals(2);
  level_->setValue(95);
  level_->setPrefix(tr("at "));
  level_->setSuffix(tr(" %"));
  level_->setAccessibleName(tr("Level of the bands"));
  grid->addWidget(level_, 3, 1);

  connect(all_points_, &QPushButton::clicked, this, [this] {
    FitRunOptions options;
    options.points = FitPointChoice::All;
    actions_.RunAsCommand([=](CommandContext& c) { FitAgain(*c.document, options, c.prompt); });
  });
  connect(finish_, &QPushButton::clicked, this, [this] {
    FitRunOptions options;
    options.finish = FinishingStep::Yes;
    if (shown_.result && shown_.result->points_used == shown_.result->points_in_range)
      options.points = FitPointChoice::All;
    actions_.RunAsCommand([=](CommandContext& c) { FitAgain(*c.document, options, c.prompt); });
  });
  connect(text, &QPushButton::clicked, this, [this] {
    QApplication::clipboard()->setText(
        ToQt(FitAsText(shown_.data_set, shown_.model, *shown_.result)));
  });
  connect(table, &QPushButton::clicked, this, [this] {
    QApplication::clipboard()->setText(ToQt(FitAsTable(shown_.model, *shown_.result)));
  });
  connect(residuals, &QPushButton::clicked, this,
          [this] { actions_.RunAsCommand([](CommandContext& c) { AddResiduals(*c.document); }); });
  connect(print, &QPushButton::clicked, this, [this] {
    actions_.RunAsCommand([](CommandContext& c) {
      const TxyGraph& graph = c.document->Graph();
      PrintFitOnGraph(*c.document, QSizeF(graph.ClientWidth(), graph.ClientHeight()));
    });
  });
  connect(bands_, &QPushButton::clicked, this, [this] {
    const double level = level_->value() / 100;
    actions_.RunAsCommand([=](CommandContext& c) { AddBands(*c.document, level); });
  });
  return box;
}

void FitPanel::Follow(Document* document) {
  const TSeries* series = document ? document->Graph().CurrentSeries() : nullptr;
  const bool same = shown_.result && series && shown_.document == document &&
                    shown_.data_set == series->SeriesName();
  const std::shared_ptr<const FitResult> result =
      series ? series->Fit().SharedResult() : std::shared_ptr<const FitResult>();
  if (!result) {
    SetState(same ? State::Outdated : State::Nothing);
    if (!same) shown_ = {};
    return;
  }
  FitSettings model = series->Fit().Settings();
  if (!same || result != shown_.result || model != shown_.model) {
    shown_ = {document, series->SeriesName(), std::move(model), result};
    ShowVerdict();
    ShowParameters();
    ShowFigures();
    ShowCorrelations();
  }
  SetState(State::Valid);
}

void FitPanel::SetState(State state) {
  state_ = state;
  hint_->setVisible(state == State::Nothing);
  outdated_->setVisible(state == State::Outdated);
  content_->setVisible(state != State::Nothing);
  content_->setEnabled(state == State::Valid);
  buttons_->setVisible(state != State::Nothing);
  buttons_->setEnabled(state == State::Valid);
  if (state != State::Valid) return;
  const FitResult& result = *shown_.result;
  all_points_->setEnabled(result.points_used < result.points_in_range);
  finish_->setEnabled(shown_.model.ProcType != FitProcType::cfp_Newton);
  bands_->setEnabled(!Failed(result.outcome.why) && result.statistics.degrees_of_freedom > 0);
}

void FitPanel::ShowVerdict() {
  const FitResult& result = *shown_.result;
  verdict_icon_->setPixmap(InkIcon(IconOf(result)).pixmap(kIconSize, kIconSize));
  verdict_icon_->setAccessibleName(tr(NameOfIcon(result)));
  verdict_->setText(ToQt(result.verdict.summary));
  QStringList notes;
  for (const std::string& note : result.verdict.notes) notes.append("• " + ToQt(note));
  notes_->setText(notes.join("\n"));
  notes_->setVisible(!notes.isEmpty());
}

void FitPanel::ShowParameters() {
  const std::vector<FittedParameter> fitted = FittedParameters(shown_.model, *shown_.result);
  parameters_->setColumnCount(4);
  parameters_->setHorizontalHeaderLabels(
      {tr("Parameter"), tr("Value"), tr("Standard error"), tr("Units")});
  parameters_->setRowCount(static_cast<int>(fitted.size()));
  int row = 0;
  for (const FittedParameter& one : fitted) {
    Put(*parameters_, row, 0, ToQt(one.settings.Name))->setToolTip(ToQt(one.settings.Description));
    Put(*parameters_, row, 1, ToQt(ValueText(one)), Qt::AlignRight)
        ->setToolTip(ToQt(ShortestText(one.settings.Value)));
    QTableWidgetItem* error = Put(*parameters_, row, 2, ToQt(ErrorText(one)), Qt::AlignRight);
    if (std::isfinite(one.error)) error->setToolTip(ToQt(ShortestText(one.error)));
    Put(*parameters_, row, 3, ToQt(one.settings.Units));
    ++row;
  }
  parameters_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  parameters_->horizontalHeader()->setMinimumSectionSize(36);
  parameters_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  parameters_->horizontalHeader()->setSectionResizeMode(3, QHeaderView::Stretch);
  FitHeight(*parameters_);
}

void FitPanel::ShowFigures() {
  const auto figures = FitFigures(*shown_.result);
  figures_->setColumnCount(2);
  figures_->setRowCount(static_cast<int>(figures.size()));
  int row = 0;
  for (const auto& [label, value] : figures) {
    Put(*figures_, row, 0, ToQt(label));
    Put(*figures_, row, 1, ToQt(value), Qt::AlignRight);
    ++row;
  }
  figures_->horizontalHeader()->setStretchLastSection(true);
  FitHeight(*figures_);
}

void FitPanel::ShowCorrelations() {
  const std::vector<std::string>& names = shown_.result->names;
  const std::vector<double>& correlation = shown_.result->statistics.correlation;
  const std::size_t k = names.size();
  const bool any = k > 1 && correlation.size() == k * k;
  correlations_title_->setVisible(any);
  correlations_->setVisible(any);
  if (!any) return;
  QStringList header{QString()};
  for (const std::string& name : names) header.append(ToQt(name));
  correlations_->setColumnCount(static_cast<int>(k + 1));
  correlations_->setRowCount(static_cast<int>(k));
  correlations_->setHorizontalHeaderLabels(header);
  for (std::size_t i = 0; i < k; ++i) {
    Put(*correlations_, static_cast<int>(i), 0, ToQt(names[i]));
    for (std::size_t j = 0; j < k; ++j) {
      const double value = correlation[i * k + j];
      const QString text = std::isfinite(value) ? ToQt(FixedText(value, 3)) : QString();
      QTableWidgetItem* item =
          Put(*correlations_, static_cast<int>(i), static_cast<int>(j + 1), text, Qt::AlignRight);
      QFont font = correlations_->font();
      font.setBold(i != j && std::abs(value) > kStrong);
      item->setFont(font);
    }
  }
  FitHeight(*correlations_);
}

}  // namespace tarnwick
