#include "editors/data/points_page.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "base/day_number.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/prompt.h"
#include "desk/commands/command_actions.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "editors/data/points_model.h"
#include "editors/data/points_view.h"
#include "graph/picking.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostDeleted = 10'000;
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
  auto* line = new QHBoxLayout(bar);
  line->setContentsMargins(0, 0, 0, 0);
  x_ = MakeField(tr("X"), "NewX", bar);
  y_ = MakeField(tr("Y"), "NewY", bar);
  auto* add = new QPushButton(tr("&Add"), bar);
  add->setObjectName("AddPoint");
  add->setToolTip(tr("Add a point at this X and Y"));
  delete_ = new QPushButton(tr("&Delete"), bar);
  delete_->setObjectName("DeletePoints");
  delete_->setToolTip(tr("Delete the marked points"));
  copy_ = new QPushButton(tr("&Copy"), bar);
  copy_->setObjectName("CopyPoints");
  copy_->setToolTip(tr("Copy the marked points as text"));
  for (QWidget* widget : std::initializer_list<QWidget*>{x_, y_, add, delete_, copy_}) {
    line->addWidget(widget);
  }
  connect(add, &QPushButton::clicked, this, &PointsPage::Insert);
  connect(y_, &QLineEdit::returnPressed, this, &PointsPage::Insert);
  connect(delete_, &QPushButton::clicked, this, &PointsPage::Delete);
  connect(copy_, &QPushButton::clicked, this, &PointsPage::Copy);
  return bar;
}

void PointsPage::Refresh() {
  const TSeries* const series = series_.Get();
  const Document* const document = series_.GetDocument();
  const bool followed = std::exchange(following_, true);
  model_->Take(document != nullptr ? &document->Graph() : nullptr, series);
  view_->PointsChanged();
  following_ = followed;
  count_->setText(tr("%L1 points").arg(model_->Size()));
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
  const PointChain& points = model_->Points();
  std::size_t place = points.LowerBound(point->x);
  while (place < points.Size() && points.At(place).id != point->number &&
         points.At(place).x == point->x) {
    ++place;
  }
  if (place == points.Size() || points.At(place).id != point->number) return;
  following_ = true;
  view_->GoTo(place);
  following_ = false;
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

bool PointsPage::TakeY(std::int32_t id, double y) {
  bool taken = false;
  parts_.actions.RunAsCommand([&](CommandContext& context) {
    if (series_.Get() == nullptr || !MayEdit(context)) return;
    taken = series_.GetDocument()->Edit(
        "Edit Point", [&](TxyGraph& graph) { graph.CurrentSeries()->SetY(id, y); });
  });
  return taken;
}

void PointsPage::Insert() {
  const TSeries* const series = series_.Get();
  if (series == nullptr) return;
  const TxyGraph& graph = series_.GetDocument()->Graph();
  const std::optional<double> x = ValueOf(*x_, graph.Axis(AxisId::X).ShowAsTime());
  const std::optional<double> y = ValueOf(*y_, graph.Axis(YAxisOf(*series)).ShowAsTime());
  MarkWrong(*x_, x ? QString() : tr("This is no value of X."));
  MarkWrong(*y_, y ? QString() : tr("This is no value of Y."));
  if (!x || !y) return;
  parts_.actions.RunAsCommand([&](CommandContext& context) {
    if (!MayEdit(context)) return;
    series_.GetDocument()->Edit(
        "Insert Point", [&](TxyGraph& changed) { changed.CurrentSeries()->AddPoint(*x, *y); });
    const std::size_t place = series_.Get()->Points().LowerBound(*x);
    Refresh();
    view_->GoTo(place);
  });
}

void PointsPage::Delete() {
  const auto marked = view_->Marked();
  if (!marked || series_.Get() == nullptr) return;
  parts_.actions.RunAsCommand([&](CommandContext& context) {
    if (marked->second - marked->first >= kMostDeleted) {
      throw Error("At most 10000 points are deleted at once.");
    }
    std::vector<std::int32_t> ids;
    for (std::size_t i = marked->first; i <= marked->second; ++i) {
      ids.push_back(model_->Points().At(i).id);
    }
    if (!MayEdit(context)) return;
    series_.GetDocument()->Edit(ids.size() == 1 ? "Delete Point" : "Delete Points",
                                [&](TxyGraph& graph) {
                                  TSeries& series = *graph.CurrentSeries();
                                  series.BeginUpdate();
                                  for (const std::int32_t id : ids) series.DeletePoint(id);
                                  series.EndUpdate();
                                });
    view_->GoTo(marked->first);
  });
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
