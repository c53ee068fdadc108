#include "editors/data/changes_list.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

namespace tarnwick {
namespace {

constexpr std::size_t kMostCompared = 1'000'000;
constexpr std::size_t kMostListed = 10'000;
constexpr int kRowsSeen = 5;
constexpr int kRowMargin = 6;  // pixels

constexpr std::array kFates = {QT_TR_NOOP("changed"), QT_TR_NOOP("moved"), QT_TR_NOOP("removed"),
                               QT_TR_NOOP("added")};

}  // namespace

ChangesList::ChangesList(QWidget* parent)
    : QWidget(parent),
      told_(new QLabel(this)),
      table_(new QTableWidget(this)),
      back_(new QPushButton(tr("Put &Back"), this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 6, 0, 0);
  told_->setObjectName("ChangesTold");
  told_->setWordWrap(true);
  column->addWidget(told_);
  table_->setObjectName("Changes");
  table_->setAccessibleName(tr("Points that differ from what was read"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setColumnCount(4);
  table_->setHorizontalHeaderLabels({tr("#"), tr("Point was"), tr("As read"), tr("Now")});
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  table_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargin);
  table_->setFixedHeight((kRowsSeen + 1) * (fontMetrics().height() + kRowMargin) + kRowMargin);
  column->addWidget(table_);
  auto* line = new QHBoxLayout;
  auto* all = new QPushButton(tr("Put All Bac&k"), this);
  back_->setObjectName("PutBack");
  back_->setToolTip(tr("Make the points marked in this list what they were when they were read"));
  all->setObjectName("PutAllBack");
  all->setToolTip(tr("Make all points what they were when they were read"));
  line->addStretch();
  line->addWidget(back_);
  line->addWidget(all);
  column->addLayout(line);
  connect(table_, &QTableWidget::itemSelectionChanged, this, &ChangesList::ChosenChanged);
  connect(back_, &QPushButton::clicked, this, &ChangesList::putBackWanted);
  connect(all, &QPushButton::clicked, this, &ChangesList::putAllBackWanted);
  hide();
}

void ChangesList::Show(const PointChain& now, const SeriesAsRead* as_read,
                       const std::function<QString(const Point&)>& text) {
  const PointChain& was = as_read != nullptr ? as_read->points : now;
  if (now_.SharesAllWith(now) && was_.SharesAllWith(was)) return;
  now_ = now;
  was_ = was;
  changes_ = ChangesBetween(was, now, kMostCompared);
  Fill(text);
  told_->setText(Summary());
  setVisible(!changes_ || !changes_->empty());
}

void ChangesList::Fill(const std::function<QString(const Point&)>& text) {
  const QSignalBlocker blocker(table_);
  const std::size_t listed = changes_ ? std::min(changes_->size(), kMostListed) : 0;
  table_->clearSelection();
  table_->setRowCount(static_cast<int>(listed));
  table_->setVisible(listed > 0);
  for (std::size_t i = 0; i < listed; ++i) {
    const PointChange& change = (*changes_)[i];
    const QString texts[] = {
        QString::number(change.Id()), tr(kFates[static_cast<std::size_t>(change.fate)]),
        change.was ? text(*change.was) : QString(), change.now ? text(*change.now) : QString()};
    int column = 0;
    for (const QString& one : texts) {
      auto* item = new QTableWidgetItem(one);
      item->setToolTip(one);
      table_->setItem(static_cast<int>(i), column++, item);
    }
  }
  back_->setVisible(listed > 0);
  ChosenChanged();
}

QString ChangesList::Summary() const {
  if (!changes_) return tr("More than %1 points may differ from what was read.").arg(kMostCompared);
  std::array<qsizetype, kFates.size()> counts{};
  for (const PointChange& change : *changes_) ++counts.at(static_cast<std::size_t>(change.fate));
  QStringList parts;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts.at(i) > 0) parts << tr("%1 %2").arg(counts.at(i)).arg(tr(kFates[i]));
  }
  QString told = tr("Since the points were read: %1.").arg(parts.join(", "));
  if (changes_->size() > kMostListed) told += ' ' + tr("The first %1 are listed.").arg(kMostListed);
  return told;
}

std::vector<PointChange> ChangesList::Chosen() const {
  std::vector<PointChange> chosen;
  for (const QModelIndex& row : table_->selectionModel()->selectedRows()) {
    chosen.push_back(changes_->at(static_cast<std::size_t>(row.row())));
  }
  return chosen;
}

void ChangesList::ChosenChanged() {
  const std::vector<PointChange> chosen = Chosen();
  back_->setEnabled(!chosen.empty());
  if (chosen.size() == 1 && chosen.front().now) emit pointChosen(*chosen.front().now);
}

}  // namespace tarnwick
