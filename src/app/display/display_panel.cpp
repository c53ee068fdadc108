#include "app/display/display_panel.h"

#include <QEvent>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include "app/display/display_grid.h"
#include "app/display/indicator.h"
#include "app/display/value_editor.h"
#include "base/undefined.h"
#include "desk/commands/command_actions.h"
#include "desk/commands/workspace.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

IndicatorLabels LabelsOf(const DisplayedParameter& parameter) {
  const QString name = ToQt(parameter.name);
  return {.parameter = parameter.units.empty() ? name : name + " [" + ToQt(parameter.units) + "]",
          .data_set = ToQt(parameter.data_set)};
}

}  // namespace

std::unique_ptr<Panel> MakeDisplayPanel(const PanelParts& parts) {
  return std::make_unique<TDisplayPanel>(parts);
}

TDisplayPanel::TDisplayPanel(const PanelParts& parts, QWidget* parent)
    : Panel(parent),
      parts_(parts),
      scroll_(new QScrollArea(this)),
      hint_(new QLabel(tr("Printed parameters of models that are drawn are shown here."), this)) {
  setObjectName("TDisplayPanel");
  hint_->setWordWrap(true);
  hint_->setAlignment(Qt::AlignTop);
  hint_->setMargin(8);
  hint_->setForegroundRole(QPalette::PlaceholderText);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);  // it follows the indicator that has it
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->setWidget(new QWidget(scroll_));
  scroll_->viewport()->installEventFilter(this);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(hint_);
  column->addWidget(scroll_, 1);
  thread_ = std::make_unique<TCloseDisplayThread>([this](std::vector<std::string> texts,
                                                         int version) {
    texts_.Address().Post([this, texts = std::move(texts), version] { ShowTexts(texts, version); });
  });
}

QSize TDisplayPanel::sizeHint() const {
  return {140, 200};
}

void TDisplayPanel::Follow(Document*, PanelChange) {
  if (!isVisible()) return;
  TakeParameters();
  displayed_ = ValuesOf(shown_);
  if (!shown_.empty()) thread_->Put({displayed_, version_});
}

void TDisplayPanel::TakeParameters() {
  const std::vector<Document*> documents = parts_.workspace.Documents();
  for (const Document* const document : documents) {
    connect(document, &Document::fitStepped, this, &TDisplayPanel::ShowFitting,
            Qt::UniqueConnection);
  }
  std::vector<DisplayedParameter> wanted = DisplayedParametersOf(documents);
  if (wanted == shown_) return;
  shown_ = std::move(wanted);
  displayed_.clear();
  Rebuild();
}

void TDisplayPanel::ShowFitting(Document* document, std::size_t series,
                                const std::vector<double>& values) {
  if (!isVisible()) return;
  TakeParameters();
  // What a fit of several DataSets told of the others stays.
  if (displayed_.size() != shown_.size()) displayed_ = ValuesOf(shown_);
  bool any = false;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    if (shown_[i].document != document || shown_[i].series != series) continue;
    displayed_[i] = {values.at(static_cast<std::size_t>(shown_[i].number - 1)), kUndefined};
    any = true;
  }
  if (any) thread_->Put({displayed_, version_});
}

void TDisplayPanel::Rebuild() {
  ++version_;
  for (auto last = indicators_.rbegin(); last != indicators_.rend(); ++last) {
    (*last)->hide();
    (*last)->deleteLater();  // its click may be what led here
  }
  indicators_.clear();
  for (const DisplayedParameter& parameter : shown_) {
    auto* const indicator = new TIndicator(LabelsOf(parameter), scroll_->widget());
    connect(indicator, &QAbstractButton::clicked, this,
            [this, parameter] { EditValue(parameter); });
    indicator->show();
    indicators_.push_back(indicator);
  }
  hint_->setVisible(shown_.empty());
  scroll_->setVisible(!shown_.empty());
  LayOut();
}

void TDisplayPanel::LayOut() {
  const int width = scroll_->viewport()->width();
  const DisplayGrid grid = DisplayGridOf(width);
  int number = 0;
  for (TIndicator* const indicator : indicators_) indicator->TakePlace(grid, number++);
  const int lowest = indicators_.empty() ? 0 : grid.Place(number - 1).bottom();
  scroll_->widget()->resize(width, lowest + 4);
}

void TDisplayPanel::ShowTexts(const std::vector<std::string>& texts, int version) {
  if (version != version_) return;
  for (std::size_t i = 0; i < indicators_.size(); ++i) indicators_[i]->ShowValue(ToQt(texts[i]));
}

void TDisplayPanel::EditValue(const DisplayedParameter& parameter) {
  const std::optional<ParameterSettings> settings = SettingsOf(parameter);
  if (!settings) return;
  ValueEditor editor(ToQt(settings->Name), ToQt(settings->Units), settings->Value, window());
  if (editor.exec() != QDialog::Accepted) return;
  const double value = editor.Value();
  parts_.actions.RunAsCommand([&](CommandContext&) { ChangeValue(parameter, value); });
}

bool TDisplayPanel::event(QEvent* event) {
  const bool done = Panel::event(event);
  if (event->type() == QEvent::Show) Follow(nullptr, {});
  return done;
}

bool TDisplayPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) LayOut();
  return Panel::eventFilter(watched, event);
}

}  // namespace tarnwick
