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
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kMostPreviewed = 300'000;  // points; more would make typing slow

}  // namespace

ResultDialog::ResultDialog(Document& document, const ResultTexts& texts, AxisId axis,
                           Prompt& prompt, QWidget* parent)
    : QDialog(parent),
      document_(document),
      prompt_(prompt),
      texts_(texts),
      preview_(document),
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

TSeries& ResultDialog::Source() {
  return ChosenSeries(document_.Graph(), *series_);
}

QString ResultDialog::SourceName() const {
  return series_->currentText();
}

QStringList ResultDialog::SourceNames() const {
  QStringList names;
  for (int i = 0; i < series_->count(); ++i) names.append(series_->itemText(i));
  return names;
}

void ResultDialog::OfferName() {
  preview_.Clear();
  try {
    Follow(Source());
    output_->Offer(NameFor(document_.Graph(), Source()));
  } catch (const Error&) {
    output_->Offer({});  // the preview tells what is the matter
  }
  Refresh();
}

void ResultDialog::Refresh() {
  preview_.Clear();
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
  const TSeries& source = Source();
  std::string told = LiveSourceText(source);
  const auto add = [&told](const std::string& text) {
    if (!text.empty()) told += (told.empty() ? "" : " ") + text;
  };
  const bool wanted = show_preview_->isChecked();
  if (wanted && HasLiveSource(document_.Graph())) {
    add("No preview while a live link feeds the graph.");  // it would take back what comes meanwhile
  } else if (wanted && source.PointCount() > kMostPreviewed) {
    add("No preview of more than " + std::to_string(kMostPreviewed) + " points.");
  } else if (wanted) {
    preview_.Show([&](TxyGraph& graph) {
      add(Make(graph, Source(), output_->Chosen(), ResultStage::Preview));
    });
  }
  Tell(told, false);
}

void ResultDialog::Tell(const std::string& text, bool refused) {
  QPalette colors = palette();
  if (refused) colors.setColor(QPalette::WindowText, WrongTextColor());
  told_->setPalette(colors);
  told_->setText(ToQt(text));
}

bool ResultDialog::Finish() {
  preview_.Clear();
  try {
    document_.Edit(texts_.step, [&](TxyGraph& graph) {
      Make(graph, Source(), output_->Chosen(), ResultStage::Final);
    });
    return true;
  } catch (const Error& error) {
    prompt_.Tell(error.what());
    return false;
  }
}

void ResultDialog::done(int result) {
  if (result == Accepted && !Lacking().isEmpty()) return;
  preview_.Clear();
  if (result == Accepted && !Finish()) return;
  QDialog::done(result);
}

}  // namespace tarnwick
