#include "app/fit/fit_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include "app/fit/fit_work.h"
#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/document.h"
#include "desk/widgets/text.h"
#include "desk/widgets/text_lines.h"
#include "graph/xy_graph.h"
#include "results/fit_leftovers.h"

namespace tarnwick {
namespace {

constexpr int kMostLines = 2;

/// Of points that come by themselves the fits are made anew all the time.
QString TextOf(Document& document) {
  const TSeries* const series = document.Graph().CurrentSeries();
  const bool live = document.Live().State() == StreamState::Running;
  return series && !live ? ToQt(OutdatedText(document.Graph(), *series)) : QString();
}

}  // namespace

FitBar::FitBar(Document& document, Prompt& prompt, QWidget* parent)
    : NoteBar(parent),
      document_(document),
      prompt_(prompt),
      text_(new TextLines(kMostLines, this)),
      again_(new QPushButton(tr("Fit Again"), this)) {
  setObjectName("FitBar");
  text_->setObjectName("FitOutdatedOnGraph");
  again_->setObjectName("FitAgain");
  again_->setToolTip(tr("Fit the function to the points as they now are, and make these anew"));
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 4, 4);
  row->addWidget(NoteIcon(this), 0, Qt::AlignVCenter);
  row->addWidget(text_, 1);
  row->addWidget(again_, 0, Qt::AlignVCenter);
  QToolButton* const close = CloseButton(this);
  row->addWidget(close, 0, Qt::AlignVCenter);
  connect(again_, &QPushButton::clicked, this, &FitBar::Again);
  connect(close, &QToolButton::clicked, this, [this] {
    closed_ = text_->Text();
    Follow();
  });
  connect(&document_, &Document::stateChanged, this, &FitBar::Follow);
  Follow();
}

void FitBar::Follow() {
  const QString text = TextOf(document_);
  if (text.isEmpty()) closed_.clear();
  setVisible(!text.isEmpty() && text != closed_);
  if (text.isEmpty()) return;
  text_->ShowText(text);
  // A share of a fit of several is not made anew alone.
  const LastFit& last = CurrentDataSet(document_).Fit().Last();
  again_->setVisible(!last.record->result->together);
}

void FitBar::Again() {
  try {
    FitAgain(document_, {OptionsOfLast(CurrentDataSet(document_))}, prompt_);
  } catch (const Error& error) {
    prompt_.Tell(error.what());
  }
}

}  // namespace tarnwick
