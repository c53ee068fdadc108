#include "app/fit/fit_panel.h"

#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <cmath>

#include "app/fit/fit_outcome.h"
#include "app/fit/fit_together_view.h"
#include "app/fit/fit_work.h"
#include "app/fit/verdict_label.h"
#include "base/number_text.h"
#include "desk/commands/command.h"
#include "desk/commands/command_actions.h"
#include "desk/document/document.h"
#include "desk/widgets/full_table.h"
#include "desk/widgets/number_box.h"
#include "desk/widgets/text.h"
#include "desk/widgets/wrapped_label.h"
#include "fit/judge/fit_bands.h"
#include "results/fit_leftovers.h"
#include "results/fit_texts.h"
#include "results/fitted_model.h"
#include "results/joint_fit.h"

namespace tarnwick {
namespace {

/// Correlations beyond this are shown in bold.
constexpr double kStrong = 0.95;

}  // namespace

std::unique_ptr<Panel> MakeFitPanel(const PanelParts& parts) {
  return std::make_unique<FitPanel>(parts.actions);
}

FitPanel::FitPanel(CommandActions& actions, QWidget* parent) : Panel(parent), actions_(actions) {
  setObjectName("FitPanel");
  auto* column = new QVBoxLayout(this);
  hint_ = SentencesLabel(this);
  hint_->setObjectName("FitHint");
  outdated_ = HeadingLabel({}, this);
  outdated_->setObjectName("FitOutdated");
  outdated_->setWordWrap(true);
  again_ = new QPushButton(tr("Fit A&gain"), this);
  again_->setToolTip(tr("Fit the function to the points as they now are"));
  auto* again_row = new QHBoxLayout;
  again_row->addWidget(outdated_, 1);
  again_row->addWidget(again_);
  column->addLayout(again_row);
  column->addWidget(hint_, 1, Qt::AlignTop);
  scroll_ = new QScrollArea(this);
  scroll_->setWidgetResizable(true);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setAccessibleName(tr("Fit Result"));
  scroll_->setWidget(MakeContent());
  column->addWidget(scroll_, 1);
  buttons_ = MakeButtons();
  column->addWidget(buttons_);
  connect(again_, &QPushButton::clicked, this, [this] { FitFromHere(FinishingStep::No); });
  ShowHint(nullptr);
  SetState(State::Nothing);
}

QWidget* FitPanel::MakeContent() {
  auto* content = new QWidget(this);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 4, 0);
  verdict_ = new VerdictLabel("FitVerdict", content);
  notes_ = SentencesLabel(content);
  parameters_ = new FullTable(tr("Parameters"), FullTable::Width::Whole, content);
  parameters_->setObjectName("FitParameters");
  figures_ = MakeFigures(tr("Statistics"), "FitFigures", content);
  correlations_title_ = HeadingLabel(tr("Correlations"), content);
  correlations_ = new FullTable(tr("Correlations"), FullTable::Width::OfContents, content);
  column->addWidget(verdict_);
  column->addWidget(notes_);
  column->addWidget(HeadingLabel(tr("Parameters"), content));
  column->addWidget(parameters_);
  error_model_ = SentencesLabel(content);
  error_model_->setForegroundRole(QPalette::PlaceholderText);
  column->addWidget(error_model_);
  column->addWidget(HeadingLabel(tr("Statistics"), content));
  column->addWidget(figures_);
  column->addWidget(correlations_title_);
  column->addWidget(correlations_);
  together_ = new FitTogetherView(content);
  column->addWidget(together_);
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
  residuals_ = AddButton(*grid, 2, 0, tr("&Residuals"),
                         tr("Data less model, as a new DataSet against the second Y axis"));
  auto* print =
      AddButton(*grid, 2, 1, tr("&Print on Graph"), tr("Write the fitted parameters on the graph"));
  bands_ = AddButton(*grid, 3, 0, tr("&Confidence Bands"),
                     tr("Confidence and prediction bands as DataSets"));
  level_ = new NumberBox(box);
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
    actions_.RunAsCommand([=](CommandContext& c) { FitAgain(*c.document, {options}, c.prompt); });
  });
  connect(finish_, &QPushButton::clicked, this, [this] { FitFromHere(FinishingStep::Yes); });
  connect(text, &QPushButton::clicked, this, [this] {
    QApplication::clipboard()->setText(
        ToQt(FitAsText(shown_.data_set, shown_.model, *shown_.result)));
  });
  connect(table, &QPushButton::clicked, this, [this] {
    QApplication::clipboard()->setText(ToQt(FitAsTable(shown_.model, *shown_.result)));
  });
  connect(residuals_, &QPushButton::clicked, this,
          [this] { actions_.RunAsCommand([](CommandContext& c) { AddResiduals(*c.document); }); });
  connect(print, &QPushButton::clicked, this, [this] {
    actions_.RunAsCommand([](CommandContext& c) { PrintFitOnGraph(*c.document); });
  });
  connect(bands_, &QPushButton::clicked, this, [this] {
    const double level = level_->value() / 100;
    actions_.RunAsCommand([=](CommandContext& c) { AddBands(*c.document, level); });
  });
  return box;
}

void FitPanel::FitFromHere(FinishingStep finish) {
  actions_.RunAsCommand([=](CommandContext& c) {
    FitRunOptions options = OptionsOfLast(CurrentDataSet(*c.document));
    options.finish = finish;
    FitAgain(*c.document, {options}, c.prompt);
  });
}

void FitPanel::Follow(Document* document, PanelChange) {
  const TSeries* series = document ? document->Graph().CurrentSeries() : nullptr;
  const LastFit last = series ? series->Fit().Last() : LastFit();
  // A result of a function that is gone says nothing.
  if (!last.record || last.record->model.Expression != series->Fit().Expression()) {
    shown_ = {};
    ShowHint(series);
    return SetState(State::Nothing);
  }
  FitSettings model = last.Holds() ? series->Fit().Settings() : last.record->model;
  if (last.record->result != shown_.result || model != shown_.model ||
      series->SeriesName() != shown_.data_set) {
    shown_ = {series->SeriesName(), std::move(model), last.record->result};
    ShowResult();
  }
  const std::string changed = FitChangedText(document->Graph(), *series);
  const std::string left = changed.empty() ? "" : LeftoverText(document->Graph(), *series);
  outdated_->setText(ToQt(left.empty() ? changed : changed + ' ' + left));
  SetState(changed.empty() ? State::Valid : State::Outdated);
}

void FitPanel::ShowResult() {
  ShowVerdict();
  ShowParameters();
  ShowFigures(*figures_, *shown_.result);
  ShowCorrelations();
  together_->setVisible(shown_.result->together != nullptr);
  if (shown_.result->together) together_->Show(*shown_.result->together);
}

namespace {

/// Why nothing is shown of a DataSet with a function.
QString Hint(const TCurFit& fit) {
  if (fit.Last().damaged)
    return FitPanel::tr("%1 Fit DataSet \"%2\" again to see it. Its function is:\n\n%3")
        .arg(ToQt(ChangedText(fit.Last())));
  if (fit.Last().record)
    return FitPanel::tr(
        "The last fit of DataSet \"%1\" was one of another function. Now it is:\n\n%2");
  // What older programs saved keeps the values found, not what was told of them.
  if (IsFitted(fit.Status()))
    return FitPanel::tr(
        "The curve of DataSet \"%1\" is drawn with the values it has; their errors are not known. "
        "Fit it "
        "again to see them. Its function is:\n\n%2");
  return FitPanel::tr("There is no result of a fit for DataSet \"%1\" yet. Its function is:\n\n%2");
}

}  // namespace

void FitPanel::ShowHint(const TSeries* series) {
  const bool has_function = series != nullptr && !series->Fit().Expression().empty();
  can_fit_ = has_function && series->PointCount() > 0;
  if (!has_function) {
    hint_->ShowText(
        tr("The current DataSet has not been fitted.\n\nChoose a function in the menu Data, Curve "
           "Fitting, then Show Final Curve."));
    return;
  }
  hint_->ShowText(
      Hint(series->Fit()).arg(ToQt(series->SeriesName()), ToQt(series->Fit().Expression())));
}

void FitPanel::SetState(State state) {
  hint_->setVisible(state == State::Nothing);
  outdated_->setVisible(state == State::Outdated);
  again_->setVisible(state == State::Outdated || (state == State::Nothing && can_fit_));
  const bool share = shown_.result && shown_.result->together;
  const QString again = share ? tr("Fit A&lone") : tr("Fit A&gain");
  again_->setText(state == State::Outdated ? again : tr("Fi&t"));
  scroll_->setVisible(state != State::Nothing);
  scroll_->widget()->setEnabled(state == State::Valid);
  buttons_->setVisible(state != State::Nothing);
  buttons_->setEnabled(state == State::Valid);
  if (state != State::Valid) return;
  const FitResult& result = *shown_.result;
  // Of a share these would leave the other DataSets behind.
  all_points_->setEnabled(!share && result.points_used < result.points_in_range);
  finish_->setEnabled(!share && shown_.model.ProcType != FitProcType::cfp_Newton);
  const bool failed = Failed(result.outcome.why);
  residuals_->setEnabled(!failed);
  bands_->setEnabled(!failed && HasErrors(result.statistics));
  level_->setEnabled(bands_->isEnabled());
}

void FitPanel::ShowVerdict() {
  const FitResult& result = *shown_.result;
  verdict_->Show(result);
  QStringList notes;
  for (const std::string& note : result.verdict.notes) notes.append("• " + ToQt(note));
  notes_->ShowText(notes.join("\n"));
  notes_->setVisible(!notes.isEmpty());
}

void FitPanel::ShowParameters() {
  const std::vector<FittedParameter> fitted = FittedParameters(shown_.model, *shown_.result);
  const bool failed = Failed(shown_.result->outcome.why);
  error_model_->setVisible(!failed);
  error_model_->ShowText(tr("Errors: %1").arg(ToQt(ErrorModelText(shown_.result->statistics))));
  parameters_->setColumnCount(4);
  parameters_->setHorizontalHeaderLabels(
      {tr("Parameter"), tr("Value"), tr("Standard error"), tr("Units")});
  parameters_->setRowCount(static_cast<int>(fitted.size()));
  int row = 0;
  for (const FittedParameter& one : fitted) {
    parameters_->Put(row, 0, ToQt(one.settings.Name))->setToolTip(ToQt(one.settings.Description));
    parameters_->Put(row, 1, ToQt(ValueText(one)), Qt::AlignRight)
        ->setToolTip(ToQt(ShortestText(one.settings.Value)));
    QTableWidgetItem* error =
        parameters_->Put(row, 2, failed ? QString() : ToQt(ErrorText(one)), Qt::AlignRight);
    if (std::isfinite(one.error)) error->setToolTip(ToQt(ShortestText(one.error)));
    parameters_->Put(row, 3, ToQt(one.settings.Units));
    ++row;
  }
  const bool units = std::any_of(fitted.begin(), fitted.end(),
                                 [](const auto& one) { return !one.settings.Units.empty(); });
  parameters_->setColumnHidden(3, !units);
  parameters_->FitContents();
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
    correlations_->Put(static_cast<int>(i), 0, ToQt(names[i]));
    for (std::size_t j = 0; j < k; ++j) {
      const double value = correlation[i * k + j];
      const QString text = std::isfinite(value) ? ToQt(FixedText(value, 3)) : QString();
      QTableWidgetItem* item =
          correlations_->Put(static_cast<int>(i), static_cast<int>(j + 1), text, Qt::AlignRight);
      QFont font = correlations_->font();
      font.setBold(i != j && std::abs(value) > kStrong);
      item->setFont(font);
    }
  }
  correlations_->FitContents();
}

}  // namespace tarnwick
