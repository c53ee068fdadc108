#include "app/analysis/evaluate_panel.h"

#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <cmath>
#include <optional>

#include "app/canvas/canvas_points.h"
#include "app/canvas/graph_canvas.h"
#include "base/day_number.h"
#include "base/error.h"
#include "base/number_text.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/elided_label.h"
#include "desk/widgets/full_table.h"
#include "desk/widgets/text.h"
#include "graph/read_out.h"
#include "graph/shown_series.h"
#include "results/evaluation.h"

namespace tarnwick {
namespace {

constexpr int kErrorDigits = 3;

std::optional<double> ValueIn(const QLineEdit& field, const TAxis& axis) {
  const std::string text = field.text().toStdString();
  const std::optional<double> number = ParseNumber(text);
  if (number && std::isfinite(*number)) return number;
  return axis.ShowAsTime() ? ParseDay(text) : std::nullopt;
}

}  // namespace

std::unique_ptr<Panel> MakeEvaluatePanel(const PanelParts&) {
  return std::make_unique<Txy_EValue>();
}

Txy_EValue::Txy_EValue(QWidget* parent)
    : Panel(parent),
      data_set_(new ElidedLabel(Qt::AlignLeft | Qt::AlignVCenter)),
      x_(new QLineEdit),
      y_(new QLineEdit),
      pick_(new QPushButton(tr("&Pick"))),
      table_(new FullTable(tr("Values"), FullTable::Width::Whole)),
      told_(new QLabel),
      copy_(new QPushButton(tr("&Copy"))) {
  setObjectName("Txy_EValue");
  data_set_->setObjectName("EvaluatedDataSet");
  x_->setObjectName("e_X");
  x_->setToolTip(tr("An X: what the DataSet has there"));
  y_->setObjectName("e_Y");
  y_->setToolTip(tr("A Y: where the DataSet has it"));
  pick_->setCheckable(true);
  pick_->setObjectName("PickX");
  pick_->setToolTip(tr("Click into the graph to give an X"));
  table_->setObjectName("EvaluatedValues");
  told_->setWordWrap(true);
  told_->setObjectName("EvaluatedTold");
  copy_->setToolTip(tr("Copy the table, columns separated by tabs"));
  auto* x_label = new QLabel(tr("X:"));
  x_label->setBuddy(x_);
  auto* y_label = new QLabel(tr("Y:"));
  y_label->setBuddy(y_);
  auto* grid = new QGridLayout(this);
  grid->addWidget(data_set_, 0, 0, 1, 3);
  grid->addWidget(x_label, 1, 0);
  grid->addWidget(x_, 1, 1);
  grid->addWidget(pick_, 1, 2);
  grid->addWidget(y_label, 2, 0);
  grid->addWidget(y_, 2, 1);
  grid->addWidget(copy_, 2, 2);
  grid->addWidget(table_, 3, 0, 1, 3);
  grid->addWidget(told_, 4, 0, 1, 3);
  grid->setRowStretch(5, 1);
  connect(x_, &QLineEdit::textEdited, this, [this] { Ask(Asked::X); });
  connect(y_, &QLineEdit::textEdited, this, [this] { Ask(Asked::Y); });
  connect(pick_, &QPushButton::toggled, this, &Txy_EValue::SetPicking);
  connect(copy_, &QPushButton::clicked, this, &Txy_EValue::Copy);
  Show();
}

Txy_EValue::~Txy_EValue() {
  SetPicking(false);
}

void Txy_EValue::Follow(Document* document, PanelChange change) {
  const bool other = document_ != document;
  document_ = document;
  const bool redrawn = change.graph == GraphChange::Redraw || change.graph == GraphChange::Marks;
  const bool other_data = change.what == PanelChange::What::Graph && !redrawn;
  // Of what is only redrawn the regression or the model may be another one.
  if (other || other_data || (redrawn && isVisible())) Show();
}

void Txy_EValue::SetPicking(bool on) {
  on ? qApp->installEventFilter(this) : qApp->removeEventFilter(this);
}

bool Txy_EValue::eventFilter(QObject* watched, QEvent* event) {
  auto* canvas =
      event->type() == QEvent::MouseButtonPress ? qobject_cast<GraphCanvas*>(watched) : nullptr;
  if (!canvas || &canvas->GetDocument() != document_) return false;
  const auto& press = static_cast<const QMouseEvent&>(*event);
  if (press.button() != Qt::LeftButton || !IsInPlot(*canvas, press.position())) return false;
  const TAxis& axis = document_->Graph().Axis(AxisId::X);
  x_->setText(ToQt(ValueText(axis, ValueAt(*canvas, press.position()).x)));
  pick_->setChecked(false);
  Ask(Asked::X);
  return true;
}

void Txy_EValue::Ask(Asked what) {
  asked_ = what;
  QLineEdit& other = FieldOf(what == Asked::X ? Asked::Y : Asked::X);
  other.clear();
  MarkWrong(other, {});
  Show();
}

void Txy_EValue::Show() {
  const TSeries* series = document_ ? document_->Graph().CurrentSeries() : nullptr;
  data_set_->ShowText(series ? ToQt(series->SeriesName()) : tr("There is no current DataSet."));
  told_->clear();
  const bool answers = series && asked_ != Asked::Nothing;
  if (!answers) {
    if (series) told_->setText(tr("Type an X or a Y, or pick an X in the graph."));
    return ShowLines({});
  }
  const TxyGraph& graph = document_->Graph();
  QLineEdit& field = FieldOf(asked_);
  const AxisId axis = asked_ == Asked::X ? AxisId::X : YAxisOf(*series);
  const std::optional<double> value = ValueIn(field, graph.Axis(axis));
  MarkWrong(field, value || field.text().isEmpty() ? QString() : tr("This is no number."));
  if (!value) return ShowLines({});
  try {
    const std::vector<Evaluated> lines =
        asked_ == Asked::X ? EvaluateAt(*series, *value) : FindXWhere(*series, *value);
    ShowLines(lines);
    told_->setText(lines.empty()        ? tr("The DataSet has no value there.")
                   : asked_ == Asked::X ? ToQt(PassesText(*series, *value, lines))
                                        : QString());
  } catch (const Error& error) {
    ShowLines({});
    told_->setText(ToQt(error.what()));
  }
}

void Txy_EValue::ShowLines(const std::vector<Evaluated>& lines) {
  table_->clear();
  table_->setColumnCount(4);
  table_->setHorizontalHeaderLabels({"", "X", "Y", tr("Error")});
  table_->setRowCount(static_cast<int>(lines.size()));
  copy_->setEnabled(!lines.empty());
  table_->setVisible(!lines.empty());
  if (lines.empty()) return;
  const TxyGraph& graph = document_->Graph();
  const TAxis& y_axis = graph.Axis(YAxisOf(*graph.CurrentSeries()));
  for (int row = 0; row < table_->rowCount(); ++row) {
    const Evaluated& line = lines[static_cast<std::size_t>(row)];
    table_->Put(row, 0, tr(line.by.c_str()));
    table_->Put(row, 1, ToQt(ValueText(graph.Axis(AxisId::X), line.x)), Qt::AlignRight);
    table_->Put(row, 2, ToQt(ValueText(y_axis, line.y)), Qt::AlignRight);
    table_->Put(row, 3,
                IsUndefined(line.error) ? QString() : ToQt(GeneralText(line.error, kErrorDigits)),
                Qt::AlignRight);
  }
  table_->FitContents();
}

void Txy_EValue::Copy() {
  QString text;
  for (int row = 0; row < table_->rowCount(); ++row) {
    for (int column = 0; column < table_->columnCount(); ++column)
      text +=
          table_->item(row, column)->text() + (column + 1 < table_->columnCount() ? "\t" : "\n");
  }
  QApplication::clipboard()->setText(text);
}

}  // namespace tarnwick
