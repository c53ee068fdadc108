#include "editors/data/data_editor.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

#include "desk/settings/settings.h"
#include "desk/widgets/names_apart.h"
#include "desk/widgets/reading_order.h"
#include "desk/widgets/text.h"
#include "editors/data/points_page.h"
#include "editors/data/source_page.h"
#include "editors/data/statistics_page.h"

namespace tarnwick {
namespace {

constexpr Setting<int> kPage = {"DataEditor", "Page", 0, "Page of the data editor"};

}  // namespace

DataEditor::DataEditor(const PanelParts& parts, QWidget* parent) : QWidget(parent) {
  setObjectName("DataEditorPages");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(6, 6, 6, 6);
  names_ = new NameBox(this);
  names_->setObjectName("EditedDataSet");
  names_->setAccessibleName(tr("DataSet"));
  names_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  column->addWidget(names_);
  connect(names_, &QComboBox::activated, this, [this](int index) {
    if (Document* const document = series_.GetDocument()) {
      document->Graph().SetCurrentSeriesIndex(index);
    }
  });
  pages_ = new QTabWidget(this);
  pages_->setObjectName("DataPages");
  pages_->addTab(source_ = new SourcePage(parts, series_, pages_), tr("S&ource"));
  pages_->addTab(points_ = new PointsPage(parts, series_, pages_), tr("&Points"));
  pages_->addTab(statistics_ = new StatisticsPage(series_, pages_), tr("S&tatistics"));
  column->addWidget(pages_, 1);
  pages_->setCurrentIndex(parts.settings.Read(kPage));
  TabInReadingOrder(*this);
  connect(pages_, &QTabWidget::currentChanged, this, [this, &settings = parts.settings](int page) {
    settings.Write(kPage, page);
    Refresh();
  });
}

void DataEditor::Follow(Document* document) {
  if (series_.GetDocument() != document) {
    disconnect(picked_);
    disconnect(source_wanted_);
    if (document != nullptr) {
      picked_ = connect(document, &Document::pointPicked, points_, &PointsPage::FollowPick);
      source_wanted_ = connect(document, &Document::sourceWanted, this,
                               [this] { pages_->setCurrentWidget(source_); });
    }
  }
  series_.Follow(document);
  Refresh();
}

void DataEditor::Refresh() {
  // Queued changes are told when it is seen.
  if (!isVisible()) return;
  RefreshNames();
  pages_->setEnabled(series_.GetDocument() != nullptr);
  ShowPagesOf(series_.Get());
  if (pages_->currentWidget() == source_) source_->Refresh();
  if (pages_->currentWidget() == points_) points_->Refresh();
  if (pages_->currentWidget() == statistics_) statistics_->Refresh();
}

/// Without a DataSet there are but points to be typed.
void DataEditor::ShowPagesOf(const TSeries* series) {
  const QSignalBlocker quiet(pages_);  // the page shown is not one that was chosen
  for (QWidget* page : {static_cast<QWidget*>(source_), static_cast<QWidget*>(statistics_)})
    pages_->setTabEnabled(pages_->indexOf(page), series != nullptr);
  if (series == nullptr) pages_->setCurrentWidget(points_);
}

void DataEditor::RefreshNames() {
  const QSignalBlocker blocker(names_);
  names_->clear();
  if (series_.Get() == nullptr) return;
  const TxyGraph& graph = series_.GetDocument()->Graph();
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    names_->addItem(ToQt(graph.Series(i).SeriesName()));
  }
  names_->setCurrentIndex(graph.CurrentSeriesIndex());
}

void DataEditor::showEvent(QShowEvent*) {
  Refresh();
}

}  // namespace tarnwick
