#include "app/analysis/result_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "app/analysis/output_choice.h"
#include "app/analysis/series_list.h"
#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/document.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/reading_order.h"
#include "desk/widgets/text.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// Points of a graph of which results are computed on another thread.
constexpr std::int64_t kLarge = 20'000;

/// What a making came to, on a copy of the graph.
struct Made {
  GraphState graph;
  std::string told;
  std::string refused;  ///< why nothing was made; empty: it was
  bool cancelled = false;
};

Made MakeOnCopy(const GraphState& state, std::size_t source, const Making& making,
                const Progress& progress) {
  Made made;
  try {
    TxyGraph graph;
    graph.SetState(state);
    made.told = making(graph, graph.Series(source), CancelPoint(progress));
    made.graph = graph.State();
  } catch (const Cancelled&) {
    made.cancelled = true;
  } catch (const Error& error) {
    made.refused = error.what();
  }
  made.cancelled = made.cancelled || progress.Cancelled();
  return made;
}

std::string Joined(const std::string& one, const std::string& other) {
  return one.empty() || other.empty() ? one + other : one + ' ' + other;
}

}  // namespace

ResultDialog::ResultDialog(Document& document, const ResultTexts& texts, AxisId axis,
                           Prompt& prompt, QWidget* parent)
    : QDialog(parent),
      document_(document),
      prompt_(prompt),
      texts_(texts),
      preview_(document),
      later_(nullptr, AbandonedWork::RunsOut),
      series_(MakeSeriesList(document.Graph())),
      options_(new QFormLayout),
      output_(new OutputChoice(axis)),
      show_preview_(new QCheckBox(tr("Pre&view"))),
      told_(new QLabel),
      ok_(new QPushButton(tr("O&K"))) {
  setObjectName(texts.object_name);
  setWindowTitle(tr(texts.caption));
  auto* source = new QGroupBox(tr(texts.source_caption));
  source_box_ = new QVBoxLayout(source);
  source_box_->addWidget(series_);
  show_preview_->setObjectName("cbx_Preview");
  show_preview_->setToolTip(tr("Draws the result, pale, while the options change"));
  show_preview_->setChecked(true);
  told_->setObjectName("Told");
  told_->setWordWrap(true);
  told_->setMinimumHeight(told_->fontMetrics().lineSpacing() * 2);
  told_->setAlignment(Qt::AlignTop);
  ok_->setDefault(true);
  auto* cancel = new QPushButton(tr("Cancel"));
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(show_preview_);
  buttons->addStretch();
  buttons->addWidget(ok_);
  buttons->addWidget(cancel);
  auto* column = new QVBoxLayout(this);
  column->addWidget(source);
  column->addLayout(options_);
  column->addWidget(output_);
  column->addWidget(told_);
  column->addStretch();
  column->addLayout(buttons);
  connect(series_, &QComboBox::currentIndexChanged, this, &ResultDialog::OfferName);
  connect(output_, &OutputChoice::edited, this, &ResultDialog::Refresh);
  connect(show_preview_, &QCheckBox::toggled, this, &ResultDialog::Refresh);
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void ResultDialog::showEvent(QShowEvent* event) {
  TabInReadingOrder(*this);  // the tools made their options last
  QDialog::showEvent(event);
}

TSeries& ResultDialog::Source() {
  return ChosenSeries(Graph(), *series_);
}

TxyGraph& ResultDialog::Graph() {
  return document_.Graph();
}

bool ResultDialog::IsLarge() {
  std::int64_t points = 0;
  for (std::size_t i = 0; i < Graph().SeriesCount(); ++i) points += Graph().Series(i).PointCount();
  return points > kLarge;
}

QString ResultDialog::SourceName() const {
  return series_->currentText();
}

QStringList ResultDialog::SourceNames() const {
  QStringList names;
  for (int i = 0; i < series_->count(); ++i) names.append(series_->itemText(i));
  return names;
}

void ResultDialog::ClearPreview() {
  later_.GiveUp();
  preview_.Clear();
}

void ResultDialog::OfferName() {
  ClearPreview();
  try {
    Follow(Source());
    output_->Offer(NameFor(document_.Graph(), Source()));
  } catch (const Error&) {
    output_->Offer({});  // the preview tells what is the matter
  }
  Refresh();
}

void ResultDialog::Refresh() {
  ClearPreview();
  const std::string why = NameRefusal(document_.Graph(), output_->Chosen().name);
  output_->ShowRefusal(ToQt(why));
  const QString lacking = Lacking();
  ok_->setEnabled(why.empty() && lacking.isEmpty());
  Tell(lacking.toStdString(), false);
  if (!ok_->isEnabled()) return;
  try {
    ShowPreview();
  } catch (const Error& error) {
    Tell(error.what(), true);
  }
}

void ResultDialog::ShowPreview() {
  std::string told = LiveSourceText(Source());
  const bool wanted = show_preview_->isChecked();
  if (wanted && HasLiveSource(Graph())) {
    // It would take back what comes meanwhile.
    told = Joined(told, "No preview while a live link feeds the graph.");
  } else if (wanted) {
    const Making making = Chosen(output_->Chosen(), ResultStage::Preview);
    if (IsLarge()) return PreviewLater(making, told);
    preview_.Show(
        [&](TxyGraph& graph) { told = Joined(told, making(graph, Source(), CancelPoint())); });
  }
  Tell(told, false);
}

void ResultDialog::PreviewLater(const Making& making, const std::string& told) {
  Tell(Joined(told, "The preview is on its way."), false);
  const auto source = static_cast<std::size_t>(series_->currentIndex());
  later_.Begin([this, making, told, source, state = Graph().State()](Progress& progress) {
    return [this, told, made = MakeOnCopy(state, source, making, progress)] {
      if (!made.refused.empty()) return Tell(made.refused, true);
      preview_.Show([&](TxyGraph& graph) { graph.SetState(made.graph); });
      Tell(Joined(told, made.told), false);
    };
  });
}

void ResultDialog::Tell(const std::string& text, bool refused) {
  QPalette colors = palette();
  if (refused) colors.setColor(QPalette::WindowText, WrongTextColor());
  told_->setPalette(colors);
  told_->setText(ToQt(text));
}

bool ResultDialog::Finish() {
  try {
    const Making making = Chosen(output_->Chosen(), ResultStage::Final);
    if (IsLarge()) return FinishLarge(making);
    document_.Edit(texts_.step, [&](TxyGraph& graph) { making(graph, Source(), CancelPoint()); });
    return true;
  } catch (const Error& error) {
    prompt_.Tell(error.what());
    return false;
  }
}

/// False when it was cancelled.
bool ResultDialog::FinishLarge(const Making& making) {
  Made made;
  const GraphState state = Graph().State();
  const auto source = static_cast<std::size_t>(series_->currentIndex());
  Source();  // which must be there
  document_.Work().Run({texts_.caption}, [&](Progress& progress) {
    made = MakeOnCopy(state, source, making, progress);
  });
  if (made.cancelled) return false;
  if (!made.refused.empty()) throw Error(made.refused);
  document_.Edit(texts_.step, [&](TxyGraph& graph) { graph.SetState(made.graph); });
  return true;
}

void ResultDialog::done(int result) {
  if (result == Accepted && !Lacking().isEmpty()) return;
  ClearPreview();
  if (result == Accepted && !Finish()) return;
  QDialog::done(result);
}

}  // namespace tarnwick
