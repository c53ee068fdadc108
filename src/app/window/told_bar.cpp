#include "app/window/told_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

#include "base/error.h"
#include "base/prompt.h"
#include "data/import/whole_data.h"
#include "desk/document/document.h"
#include "desk/widgets/text.h"
#include "desk/widgets/text_lines.h"
#include "graph/series_of_whole.h"

namespace tarnwick {
namespace {

constexpr int kMostLines = 3;

bool CanShowMore(Document& document) {
  return std::ranges::any_of(SeriesOfWhole(document.WholeGraph()),
                             [](TSeries* const series) { return ShowsSomeRows(series->Source()); });
}

}  // namespace

ToldBar::ToldBar(Document& document, Prompt& prompt, QWidget* parent)
    : NoteBar(parent),
      document_(document),
      prompt_(prompt),
      text_(new TextLines(kMostLines, this)),
      guessed_(new QPushButton(tr("What was &guessed"), this)),
      all_rows_(new QPushButton(tr("&Load all rows"), this)),
      no_errors_(new QPushButton(tr("Leave e&rrors out"), this)) {
  setObjectName("ToldBar");
  text_->setObjectName("Told");
  guessed_->setObjectName("WhatWasGuessed");
  guessed_->setToolTip(tr("See the file's lines as they were read, and read them otherwise"));
  all_rows_->setObjectName("LoadAllRows");
  all_rows_->setToolTip(tr("Read every row of the file"));
  no_errors_->setObjectName("LeaveErrorsOut");
  no_errors_->setToolTip(tr("Take no column as errors of another"));
  QToolButton* const close = CloseButton(this);
  close->setObjectName("CloseTold");
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 4, 4);
  row->addWidget(NoteIcon(this), 0, Qt::AlignVCenter);
  row->addWidget(text_, 1);
  row->addWidget(guessed_, 0, Qt::AlignVCenter);
  row->addWidget(all_rows_, 0, Qt::AlignVCenter);
  row->addWidget(no_errors_, 0, Qt::AlignVCenter);
  row->addWidget(close, 0, Qt::AlignVCenter);
  connect(close, &QToolButton::clicked, this, [this] {
    document_.Told().Close();
    Follow();
  });
  connect(guessed_, &QPushButton::clicked, this, &ToldBar::sourceWanted);
  connect(all_rows_, &QPushButton::clicked, this, &ToldBar::LoadAllRows);
  connect(no_errors_, &QPushButton::clicked, this, &ToldBar::LeaveErrorsOut);
  connect(&document_, &Document::stateChanged, this, &ToldBar::Follow);
  Follow();
}

void ToldBar::Follow() {
  const QString text = ToQt(document_.Told().Text());
  text_->ShowText(text);
  guessed_->setVisible(document_.Told().Tells(ToldAbout::Guessing));
  all_rows_->setVisible(CanShowMore(document_));
  no_errors_->setVisible(document_.Told().Tells(ToldAbout::Errors));
  setVisible(!text.isEmpty());
}

void ToldBar::LoadAllRows() {
  try {
    document_.Files().LoadAllRows();
  } catch (const Error& error) {
    prompt_.Tell(error.what());
  }
}

void ToldBar::LeaveErrorsOut() {
  document_.Edit("Leave Out Errors", [this](TxyGraph& graph) {
    document_.Told().Drop(ToldAbout::Errors);
    for (TSeries* const series : SeriesOfWhole(graph)) {
      const TDSInfo& source = series->Source();
      if (!source.YErrorColumn.empty() || !source.XErrorColumn.empty()) series->SetErrors({});
    }
  });
  Follow();
}

}  // namespace tarnwick
