#include "app/window/told_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>
#include <array>
#include <filesystem>
#include <string>

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

/// The text file that the DataSets are read from; empty where there is none or several.
std::filesystem::path FileOfTables(Document& document) {
  std::string file;
  for (const TSeries* const series : SeriesOfWhole(document.WholeGraph())) {
    const TDSInfo& source = series->Source();
    if (source.DataSource != DataSourceKind::Text) continue;
    if (!file.empty() && file != source.DatasourceInfo) return {};
    file = source.DatasourceInfo;
  }
  return file;
}

/// DataSets of the first file that has columns of errors of Y, without them, and these columns.
struct WithoutErrors {
  std::vector<NewSource> sources;
  std::vector<std::string> columns;
};

WithoutErrors ErrorsAsCurves(Document& document) {
  WithoutErrors without;
  const std::vector<TSeries*> whole = SeriesOfWhole(document.WholeGraph());
  for (std::size_t place = 0; place < whole.size(); ++place) {
    const TDSInfo& source = whole[place]->Source();
    // Errors that stand in the field of their value are no column.
    if (source.YErrorColumn.empty() || source.YErrorColumn == source.YDataColumn) continue;
    if (!without.sources.empty() &&
        without.sources.front().source.DatasourceInfo != source.DatasourceInfo) {
      continue;
    }
    without.columns.push_back(source.YErrorColumn);
    without.sources.push_back({place, source});
    without.sources.back().source.YErrorColumn.clear();
  }
  return without;
}

}  // namespace

ToldBar::ToldBar(Document& document, Prompt& prompt, QWidget* parent)
    : NoteBar(parent),
      document_(document),
      prompt_(prompt),
      text_(new TextLines(kMostLines, this)),
      guessed_(new QPushButton(tr("What was &guessed"), this)),
      other_table_(new QPushButton(tr("Read that &table"), this)),
      all_rows_(new QPushButton(tr("&Load all rows"), this)),
      no_errors_(new QPushButton(tr("Leave e&rrors out"), this)),
      draw_errors_(new QPushButton(tr("They are &curves"), this)) {
  setObjectName("ToldBar");
  text_->setObjectName("Told");
  guessed_->setObjectName("WhatWasGuessed");
  guessed_->setToolTip(tr("See the file's lines as they were read, and read them otherwise"));
  other_table_->setObjectName("ReadOtherTable");
  other_table_->setToolTip(tr("Open the other table of the file in a window of its own"));
  all_rows_->setObjectName("LoadAllRows");
  all_rows_->setToolTip(tr("Read every row of the file"));
  no_errors_->setObjectName("LeaveErrorsOut");
  no_errors_->setToolTip(tr("Take no column as errors of another"));
  draw_errors_->setObjectName("DrawErrors");
  draw_errors_->setToolTip(tr("Draw the columns that were taken as errors as DataSets"));
  QToolButton* const close = CloseButton(this);
  close->setObjectName("CloseTold");
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 4, 4);
  row->addWidget(NoteIcon(this), 0, Qt::AlignVCenter);
  row->addWidget(text_, 1);
  row->addWidget(guessed_, 0, Qt::AlignVCenter);
  row->addWidget(other_table_, 0, Qt::AlignVCenter);
  row->addWidget(all_rows_, 0, Qt::AlignVCenter);
  row->addWidget(no_errors_, 0, Qt::AlignVCenter);
  row->addWidget(draw_errors_, 0, Qt::AlignVCenter);
  row->addWidget(close, 0, Qt::AlignVCenter);
  connect(close, &QToolButton::clicked, this, [this] {
    document_.Told().Close();
    Follow();
  });
  connect(guessed_, &QPushButton::clicked, this, &ToldBar::sourceWanted);
  connect(other_table_, &QPushButton::clicked, this, &ToldBar::ReadOtherTable);
  connect(all_rows_, &QPushButton::clicked, this, &ToldBar::LoadAllRows);
  connect(no_errors_, &QPushButton::clicked, this, &ToldBar::LeaveErrorsOut);
  connect(draw_errors_, &QPushButton::clicked, this, &ToldBar::DrawErrors);
  connect(&document_, &Document::stateChanged, this, &ToldBar::Follow);
  Follow();
}

void ToldBar::Follow() {
  const QString text = ToQt(document_.Told().Text());
  text_->ShowText(text);
  guessed_->setVisible(
      std::ranges::any_of(std::array{ToldAbout::Guessing, ToldAbout::Runs, ToldAbout::TableEnd},
                          [this](ToldAbout about) { return document_.Told().Tells(about); }));
  other_table_->setVisible(document_.Told().OtherTable() && !FileOfTables(document_).empty());
  all_rows_->setVisible(CanShowMore(document_));
  const bool errors = document_.Told().Tells(ToldAbout::Errors);
  no_errors_->setVisible(errors);
  draw_errors_->setVisible(errors && !ErrorsAsCurves(document_).columns.empty());
  setVisible(!text.isEmpty());
}

void ToldBar::ReadOtherTable() {
  if (const auto headers = document_.Told().OtherTable()) {
    emit tableWanted(FileOfTables(document_), *headers);
  }
}

void ToldBar::LoadAllRows() {
  try {
    document_.Files().LoadAllRows();
  } catch (const Error& error) {
    prompt_.Tell(error.what());
  }
}

void ToldBar::DrawErrors() {
  const WithoutErrors without = ErrorsAsCurves(document_);
  try {
    document_.Files().ReadBy(without.sources, without.columns);
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
