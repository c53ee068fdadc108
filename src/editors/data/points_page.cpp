#include "editors/data/points_page.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/day_number.h"
#include "base/number_text.h"
#include "base/prompt.h"
#include "desk/commands/command_actions.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "editors/data/changes_list.h"
#include "editors/data/pasted_points.h"
#include "editors/data/points_model.h"
#include "editors/data/points_view.h"
#include "graph/edit/point_edit.h"
#include "graph/picking.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostCopied = 1'000'000;

std::optional<double> ValueOf(const QLineEdit& field, bool is_moment) {
  const std::string text = field.text().toStdString();
  const std::optional<double> number = ParseNumber(text);
  return number || !is_moment ? number : ParseDay(text);
}

QLineEdit* MakeField(const QString& what, const char* name, QWidget* parent) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  field->setPlaceholderText(what);
  field->setAccessibleName(what);
  return field;
}

}  // namespace

PointsPage::PointsPage(const PanelParts& parts, const EditedSeries& series, QWidget* parent)
    : QWidget(parent), parts_(parts), series_(series) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 6, 0, 0);
  model_ = new PointsModel(this);
  model_->OnTyped([this](std::int32_t id, double y) { return TakeY(id, y); });
  view_ = new PointsView(*model_, this);
  column->addWidget(BuildFind());
  column->addWidget(view_, 1);
  column->addWidget(BuildButtons());
  told_ = new QLabel(this);
  told_->setObjectName("PointsTold");
  told_->setWordWrap(true);
  told_->hide();
  column->addWidget(told_);
  changes_ = new ChangesList(this);
  column->addWidget(changes_);
  connect(changes_, &ChangesList::putBackWanted, this, &PointsPage::PutBackChosen);
  connect(changes_, &ChangesList::putAllBackWanted, this, &PointsPage::PutAllBack);
  connect(changes_, &ChangesList::pointChosen, this,
          [this](const Point& point) { GoToPoint(point.id, point.x); });
  connect(view_, &PointsView::keyPressed, this, [this](QKeySequence::StandardKey key) {
    if (key == QKeySequence::Delete) Delete();
    if (key == QKeySequence::Copy) Copy();
    if (key == QKeySequence::Paste) Paste();
  });
  connect(view_, &PointsView::markedChanged, this, &PointsPage::MarkedChanged);
}

QWidget* PointsPage::BuildFind() {
  auto* bar = new QWidget(this);
  auto* line = new QHBoxLayout(bar);
  line->setContentsMargins(0, 0, 0, 0);
  find_ = MakeField(tr("Go to X"), "FindX", bar);
  find_->setClearButtonEnabled(true);
  connect(find_, &QLineEdit::returnPressed, this, &PointsPage::Find);
  line->addWidget(find_, 1);
  count_ = new QLabel(bar);
  count_->setObjectName("PointCount");
  line->addWidget(count_);
  return bar;
}

QWidget* PointsPage::BuildButtons() {
  auto* bar = new QWidget(this);
  auto* lines = new QVBoxLayout(bar);
  lines->setContentsMargins(0, 0, 0, 0);
  auto* values = new QHBoxLayout;
  auto* buttons = new QHBoxLayout;
  lines->addLayout(values);
  lines->addLayout(buttons);
  x_ = MakeField(tr("X"), "NewX", bar);
  y_ = MakeField(tr("Y"), "NewY", bar);
  values->addWidget(x_);
  values->addWidget(y_);
  buttons->addStretch();
  const auto add = [&](QHBoxLayout* line, const QString& text, const char* name, const QString& tip,
                       auto run) {
    auto* button = new QPushButton(text, bar);
    button->setObjectName(name);
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, run);
    line->addWidget(button);
    return button;
  };
  add(values, tr("&Add"), "AddPoint", tr("Add a point at this X and Y"), &PointsPage::Insert);
  delete_ = add(buttons, tr("De&lete"), "DeletePoints", tr("Delete the marked points (Del)"),
                &PointsPage::Delete);
  copy_ = add(buttons, tr("&Copy"), "CopyPoints", tr("Copy the marked points as text (Ctrl+C)"),
              &PointsPage::Copy);
  add(buttons, tr("Pa&ste"), "PastePoints",
      tr("Paste columns of X and Y as points, or one column as Y from the marked point on "
         "(Ctrl+V)"),
      &PointsPage::Paste);
  connect(y_, &QLineEdit::returnPressed, this, &PointsPage::Insert);
  return bar;
}

void PointsPage::Refresh() {
  const TSeries* const series = series_.Get();
  const Document* const document = series_.GetDocument();
  const bool followed = std::exchange(following_, true);
  model_->Take(document != nullptr ? &document->Graph() : nullptr, series);
  view_->PointsChanged();
  following_ = followed;
  count_->setText(tr("%1 points").arg(model_->Size()));
  const bool was_empty = std::exchange(tells_empty_, document != nullptr && series == nullptr);
  if (tells_empty_) {
    told_->setText(tr("The graph has no DataSet. X and Y typed here make one."));
    told_->show();
  } else if (was_empty) {
    told_->hide();
  }
  changes_->Show(model_->Points(),
                 series != nullptr ? document->Files().AsRead().Of(*series) : nullptr,
                 [this](const Point& point) { return model_->PairText(point); });
}

void PointsPage::MarkedChanged() {
  const auto marked = view_->Marked();
  delete_->setEnabled(marked.has_value());
  copy_->setEnabled(marked.has_value());
  const TSeries* const series = series_.Get();
  const bool picks = !following_ && marked && marked->first == marked->second;
  if (!picks || series == nullptr || IsShownThroughCurve(*series)) return;
  series_.GetDocument()->Pick(PickedPointAt(*series, marked->first));
}

void PointsPage::FollowPick() {
  const std::optional<PickedPoint>& point = series_.GetDocument()->Picked();
  if (!isVisible() || !point || point->on_curve || following_) return;
  GoToPoint(point->number, point->x);
}

void PointsPage::GoToPoint(std::int32_t id, double x) {
  const PointChain& points = model_->Points();
  std::size_t place = points.LowerBound(x);
  while (place < points.Size() && points.At(place).id != id && points.At(place).x == x) ++place;
  if (place == points.Size() || points.At(place).id != id) return;
  const bool followed = std::exchange(following_, true);
  view_->GoTo(place);
  following_ = followed;
}

void PointsPage::Find() {
  const bool is_moment =
      series_.Get() != nullptr && series_.GetDocument()->Graph().Axis(AxisId::X).ShowAsTime();
  const std::optional<double> x = ValueOf(*find_, is_moment);
  MarkWrong(*find_, x ? QString() : tr("This is no value of X."));
  if (!x || model_->Size() == 0) return;
  const std::size_t above = std::min(model_->Points().LowerBound(*x), model_->Size() - 1);
  const bool below_is_nearer =
      above > 0 && *x - model_->Points().At(above - 1).x < model_->Points().At(above).x - *x;
  view_->GoTo(below_is_nearer ? above - 1 : above);
}

bool PointsPage::MayEdit(CommandContext& context) {
  TSeries& series = *series_.Get();
  const TDSInfo& source = series.Source();
  if (source.DataSource == DataSourceKind::Manual || !warned_.insert(source.DatasourceInfo).second)
    return true;
  const Answer answer = context.prompt.Ask(
      {"The points of " + series.SeriesName() + " come from " + source.DatasourceInfo +
           ". Reading them again undoes what is edited here.\n\nMake them points of their own, "
           "without a source?",
       {Answer::No, Answer::Yes, Answer::Cancel}});
  if (answer == Answer::Cancel) warned_.erase(source.DatasourceInfo);
  if (answer == Answer::Yes) {
    series_.GetDocument()->Edit("Cut off Source", [](TxyGraph& graph) {
      graph.CurrentSeries()->Source().DataSource = DataSourceKind::Manual;
    });
  }
  return answer != Answer::Cancel;
}

bool PointsPage::EditSeries(const char* step, const std::function<void(TSeries&)>& change) {
  bool edited = false;
  parts_.actions.RunAsCommand([&](CommandContext& context) {
    if (series_.Get() == nullptr || !MayEdit(context)) return;
    edited =
        series_.GetDocument()->Edit(step, [&](TxyGraph& graph) { change(*graph.CurrentSeries()); });
  });
  told_->hide();
  return edited;
}

bool PointsPage::TakeY(std::int32_t id, double y) {
  return EditSeries("Edit Point", [&](TSeries& series) { series.SetY(id, y); });
}

/// To the current DataSet, or as the first one's first point.
bool PointsPage::AddPoint(double x, double y) {
  if (series_.Get() != nullptr)
    return EditSeries("Insert Point", [&](TSeries& changed) { changed.AddPoint(x, y); });
  return series_.GetDocument()->Edit("Insert Point", [&](TxyGraph& graph) {
    auto first = std::make_unique<TSeries>();
    first->SetSeriesName("DataSet 1");
    first->AddPoint(x, y);
    graph.AddSeries(std::move(first));
  });
}

void PointsPage::Insert() {
  if (series_.GetDocument() == nullptr) return;
  const TSeries* const series = series_.Get();
  const TxyGraph& graph = series_.GetDocument()->Graph();
  const AxisId y_axis = series != nullptr ? YAxisOf(*series) : AxisId::Y;
  const std::optional<double> x = ValueOf(*x_, graph.Axis(AxisId::X).ShowAsTime());
  const std::optional<double> y = ValueOf(*y_, graph.Axis(y_axis).ShowAsTime());
  MarkWrong(*x_, x ? QString() : tr("This is no value of X."));
  MarkWrong(*y_, y ? QString() : tr("This is no value of Y."));
  if (!x || !y) return;
  if (!AddPoint(*x, *y)) return;
  Refresh();
  view_->GoTo(model_->Points().LowerBound(*x));
  x_->setFocus();  // for the next one
  x_->selectAll();
}

void PointsPage::Delete() {
  const auto marked = view_->Marked();
  if (!marked) return;
  const char* const step = marked->first == marked->second ? "Delete Point" : "Delete Points";
  const bool deleted = EditSeries(
      step, [&](TSeries& series) { DeletePoints(series, marked->first, marked->second); });
  if (!deleted) return;
  Refresh();
  view_->GoTo(marked->first);
}

void PointsPage::PutBackChosen() {
  const std::vector<PointChange> chosen = changes_->Chosen();
  EditSeries(chosen.size() == 1 ? "Put Back Point" : "Put Back Points", [&](TSeries& series) {
    const SeriesAsRead* const as_read = series_.GetDocument()->Files().AsRead().Of(series);
    if (as_read != nullptr) PutBack(series, chosen, as_read->errors);
  });
}

void PointsPage::PutAllBack() {
  EditSeries("Put Back All Points", [&](TSeries& series) {
    const SeriesAsRead* const as_read = series_.GetDocument()->Files().AsRead().Of(series);
    if (as_read == nullptr) return;
    PutBackAll(series, as_read->points, as_read->last_id, as_read->errors);
  });
}

void PointsPage::Paste() {
  if (series_.Get() == nullptr) return;
  const std::string text = QApplication::clipboard()->text().toStdString();
  const auto marked = view_->Marked();
  const std::size_t first = marked ? marked->first : 0;
  PastedPoints pasted;
  pasted.cancelled = true;
  parts_.actions.RunAsCommand([&](CommandContext& context) {
    if (!MayEdit(context)) return;
    Document& document = *series_.GetDocument();
    const DataState before = series_.Get()->State();
    document.Work().Run({"Pasting points"}, [&](Progress& progress) {
      pasted = PasteInto(before, first, text, progress);
    });
    if (pasted.cancelled) return;
    document.Edit("Paste Points",
                  [&](TxyGraph& graph) { graph.CurrentSeries()->SetState(pasted.state); });
  });
  if (pasted.cancelled) return;
  Refresh();
  TellPasted(pasted);
}

void PointsPage::TellPasted(const PastedPoints& pasted) {
  QStringList told;
  if (pasted.left_over > 0) {
    told << tr("%1 values are left out: the points end before them.").arg(pasted.left_over);
  }
  if (pasted.columns_unused > 0) {
    told << tr("Only the first two columns were taken: X and Y.");
  }
  told_->setText(told.join(' '));
  told_->setVisible(!told.isEmpty());
}

void PointsPage::Copy() const {
  const auto marked = view_->Marked();
  if (!marked) return;
  const std::size_t last = std::min(marked->second, marked->first + kMostCopied - 1);
  QString text;
  for (std::size_t i = marked->first; i <= last; ++i) {
    text += model_->Text(i, 1) + '\t' + model_->Text(i, 2) + '\n';
  }
  QApplication::clipboard()->setText(text);
}

}  // namespace tarnwick
