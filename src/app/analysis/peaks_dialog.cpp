#include "app/analysis/peaks_dialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <cmath>

#include "app/analysis/series_list.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/prompt.h"
#include "desk/document/document.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "graph/edit/mark_edit.h"
#include "graph/graph_update.h"

namespace tarnwick {
namespace {

constexpr int kMarginDigits = 4;
constexpr const char* kMarginNames[] = {"e_LeftMargin", "e_RightMargin"};
constexpr const char* kMarginLabels[] = {QT_TRANSLATE_NOOP("Txy_Peaks", "Left:"),
                                         QT_TRANSLATE_NOOP("Txy_Peaks", "Right:")};

std::optional<double> NumberIn(const QLineEdit& edit) {
  const std::optional<double> number = ParseNumber(edit.text().toStdString());
  return number && std::isfinite(*number) ? number : std::nullopt;
}

void ShowMarks(TxyGraph& graph, bool shown) {
  Appearance appearance = graph.GetAppearance();
  appearance.marks_are_shown = shown;
  graph.SetAppearance(appearance);
}

}  // namespace

Txy_Peaks::Txy_Peaks(Document& document, Prompt& prompt, QWidget* parent)
    : QDialog(parent),
      document_(document),
      prompt_(prompt),
      edit_(document, "Find Peaks"),
      marks_before_(document.Graph().Marks()),
      marks_were_shown_(document.Graph().GetAppearance().marks_are_shown),
      series_(MakeSeriesList(document.Graph())),
      found_(new QLabel) {
  setObjectName("Txy_Peaks");
  setWindowTitle(tr("Peek Peaks"));
  auto* title = new QLabel(tr("DataSet"));
  QFont bold = title->font();
  bold.setBold(true);
  title->setFont(bold);
  title->setBuddy(series_);
  found_->setObjectName("Found");
  found_->setWordWrap(true);
  auto* column = new QVBoxLayout(this);
  column->addWidget(title);
  column->addWidget(series_);
  column->addWidget(MakeMargins());
  column->addWidget(MakeNoise());
  column->addWidget(MakeCaptions());
  column->addWidget(found_);
  column->addStretch();
  column->addWidget(MakeButtons());
  connect(series_, &QComboBox::currentIndexChanged, this, [this] { cleared_ = false; });
}

QGroupBox* Txy_Peaks::MakeMargins() {
  auto* group = new QGroupBox(tr("Margins"));
  auto* row = new QHBoxLayout(group);
  for (std::size_t i = 0; i < margins_.size(); ++i) {
    Margin& margin = margins_[i];
    margin.edit = new QLineEdit(tr("None"));
    margin.edit->setObjectName(kMarginNames[i]);
    margin.taken = margin.edit->text();
    margin.edit->setToolTip(tr("An X, or None for no margin"));
    auto* label = new QLabel(tr(kMarginLabels[i]));
    label->setBuddy(margin.edit);
    row->addWidget(label);
    row->addWidget(margin.edit);
    connect(margin.edit, &QLineEdit::editingFinished, this,
            [this, &margin] { TakeMargin(margin); });
  }
  return group;
}

QWidget* Txy_Peaks::MakeNoise() {
  auto* line = new QWidget;
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(0, 0, 0, 0);
  noise_ = new QLineEdit("0.01");
  noise_->setObjectName("e_NoiseLevel");
  noise_->setMaximumWidth(noise_->fontMetrics().averageCharWidth() * 12);
  auto* label = new QLabel(tr("Noise level: "));
  label->setBuddy(noise_);
  row->addWidget(label);
  row->addWidget(noise_);
  row->addWidget(new QLabel(tr("% of the full Y-Axis scale")));
  row->addStretch();
  connect(noise_, &QLineEdit::textEdited, this, &Txy_Peaks::TakeNoise);
  return line;
}

QGroupBox* Txy_Peaks::MakeCaptions() {
  auto* group = new QGroupBox(tr("Captions Format"));
  auto* row = new QHBoxLayout(group);
  const PeakCaptions first;
  const auto add = [&](const char* name, const QString& text, int lowest, int highest, int value) {
    auto* box = new QSpinBox;
    box->setObjectName(name);
    box->setRange(lowest, highest);
    box->setValue(value);
    auto* label = new QLabel(text);
    label->setBuddy(box);
    row->addWidget(label);
    row->addWidget(box);
    connect(box, &QSpinBox::valueChanged, this, [this] { cleared_ = false; });
    return box;
  };
  digits_ = add("e_Digits", tr("Digits: "), 0, 4, first.digits);
  digits_->setToolTip(tr("At least so many digits of an exponent"));
  precision_ = add("e_Precision", tr("Precision:"), 1, 17, first.precision);
  precision_->setToolTip(tr("Significant digits"));
  row->addStretch();
  return group;
}

QWidget* Txy_Peaks::MakeButtons() {
  auto* line = new QWidget;
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& text) {
    auto* button = new QPushButton(text);
    row->addWidget(button);
    return button;
  };
  auto* preview = add(tr("&Preview"));
  auto* clear = add(tr("C&lear"));
  row->addStretch();
  auto* ok = add(tr("O&K"));
  auto* cancel = add(tr("Cancel"));
  ok->setDefault(true);
  connect(preview, &QPushButton::clicked, this, &Txy_Peaks::Preview);
  connect(clear, &QPushButton::clicked, this, &Txy_Peaks::ClearMarks);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  return line;
}

void Txy_Peaks::TakeMargin(Margin& margin) {
  if (margin.edit->text() == margin.taken) return;  // it was only passed through
  cleared_ = false;
  margin.value = NumberIn(*margin.edit);
  margin.taken = margin.value ? ToQt(GeneralText(*margin.value, kMarginDigits)) : tr("None");
  margin.edit->setText(margin.taken);
}

void Txy_Peaks::TakeNoise() {
  cleared_ = false;
  MarkWrong(*noise_, NumberIn(*noise_) ? QString() : tr("This is no number."));
}

double Txy_Peaks::NoisePercent() const {
  const std::optional<double> percent = NumberIn(*noise_);
  if (!percent)
    throw Error("The noise level \"" + noise_->text().toStdString() + "\" is no number.");
  return *percent;
}

void Txy_Peaks::Preview() {
  try {
    Search();
  } catch (const Error& error) {
    prompt_.Tell(error.what());
  }
}

void Txy_Peaks::Search() {
  for (Margin& margin : margins_) TakeMargin(margin);
  TxyGraph& graph = document_.Graph();
  TSeries& series = ChosenSeries(graph, *series_);
  const PeakOptions options{.left = margins_[0].value,
                            .right = margins_[1].value,
                            .noise_percent = NoisePercent(),
                            .captions = {digits_->value(), precision_->value()}};
  const std::vector<Peak> peaks = PeaksOn(graph, series, options);
  const GraphUpdate update(graph);
  DeleteMarks();
  marks_ = MarkPeaks(graph, peaks, options.captions);
  found_->setText(peaks.empty()
                      ? tr("No point rises above both neighbours by the noise level.")
                      : ToQt(Counted(static_cast<std::int64_t>(peaks.size()), "peak") + " found."));
}

void Txy_Peaks::DeleteMarks() {
  TxyGraph& graph = document_.Graph();
  const GraphUpdate update(graph);
  // From the end, so that none that stays has to move for each that goes.
  for (std::size_t i = marks_.size(); i > 0; --i) DeleteMark(graph, marks_[i - 1]);
  marks_.clear();
}

void Txy_Peaks::ClearMarks() {
  if (marks_.empty()) return;
  DeleteMarks();
  cleared_ = true;
  found_->clear();
}

void Txy_Peaks::Restore() {
  TxyGraph& graph = document_.Graph();
  const GraphUpdate update(graph);
  graph.Marks() = marks_before_;
  graph.MarksChanged();
  ShowMarks(graph, marks_were_shown_);
}

void Txy_Peaks::done(int result) {
  if (result == Accepted && marks_.empty() && !cleared_) {
    if (!NumberIn(*noise_)) return Preview();  // which tells why; the dialog stays
    Preview();
  }
  if (result != Accepted) Restore();
  edit_.Finish();
  QDialog::done(result);
}

}  // namespace tarnwick
