#include "desk/sources/link_edit.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "base/error.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "desk/work/latest_work.h"
#include "sources/links/link_supplier.h"
#include "sources/links/link_text.h"

namespace tarnwick {
namespace {

constexpr int kLink = 0;
constexpr int kValue = 1;
constexpr int kShownRows = 5;

}  // namespace

LinkEdit::LinkEdit(QWidget* parent)
    : PlaceEdit(parent), links_(new QTableWidget(0, 2, this)), asking_(new LatestWork(this)) {
  links_->setObjectName("Links");
  links_->setAccessibleName(tr("Links"));
  links_->setHorizontalHeaderLabels({tr("Link: service|topic!item"), tr("Value now")});
  links_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  links_->verticalHeader()->hide();
  links_->setSelectionMode(QAbstractItemView::SingleSelection);
  links_->setSelectionBehavior(QAbstractItemView::SelectRows);
  links_->setTabKeyNavigation(false);
  links_->setMinimumHeight((kShownRows + 2) * links_->verticalHeader()->defaultSectionSize());
  auto* const line = new QHBoxLayout;
  AddButtons(*line);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(links_, 1);
  column->addLayout(line);
  connect(links_, &QTableWidget::cellChanged, this, [this](int row, int column_of) {
    if (column_of == kLink) SeeTyped(row);
  });
  connect(links_, &QTableWidget::currentCellChanged, this, &LinkEdit::LinksChanged);
}

void LinkEdit::AddButtons(QBoxLayout& line) {
  const auto add = [&](const char* name, const QString& caption, const QString& hint) {
    auto* const button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setToolTip(hint);
    button->setAutoDefault(false);
    line.addWidget(button);
    return button;
  };
  QPushButton* const insert = add("AddLink", tr("Add &Link"),
                                  tr("A further link, to be typed; a list of links becomes rows"));
  remove_ = add("RemoveLink", tr("&Remove"), tr("Removes the current link from the list"));
  up_ = add("LinkUp", tr("&Up"), tr("Moves the current link one row up"));
  down_ = add("LinkDown", tr("&Down"), tr("Moves the current link one row down"));
  line.addStretch(1);
  test_ =
      add("TestLinks", tr("&Test"), tr("Asks every link and shows its value, or why it has none"));
  connect(insert, &QPushButton::clicked, this, &LinkEdit::Add);
  connect(remove_, &QPushButton::clicked, this, &LinkEdit::Remove);
  connect(up_, &QPushButton::clicked, this, [this] { Move(-1); });
  connect(down_, &QPushButton::clicked, this, [this] { Move(1); });
  connect(test_, &QPushButton::clicked, this, [this] { Test(0); });
}

void LinkEdit::Show(const TDSInfo& info) {
  asking_->GiveUp();
  const QSignalBlocker quiet(this);
  const QSignalBlocker still(links_);
  links_->setRowCount(0);
  for (const std::string& link : SplitLinkList(info.DatasourceInfo)) {
    Insert(links_->rowCount(), link);
  }
  if (links_->rowCount() == 0) Insert(0, {});
  links_->setCurrentCell(0, kLink);
  LinksChanged();
}

std::optional<QString> LinkEdit::Take(TDSInfo& info) const {
  std::vector<std::string> links;
  for (int row = 0; row < links_->rowCount(); ++row) {
    if (std::string link = LinkAt(row); !link.empty()) links.push_back(std::move(link));
  }
  try {
    info.DatasourceInfo = JoinLinks(ReadLinkList(JoinLinks(links)));
    return std::nullopt;
  } catch (const Error& error) {
    return ToQt(error.what());
  }
}

std::string LinkEdit::LinkAt(int row) const {
  return links_->item(row, kLink)->text().trimmed().toStdString();
}

void LinkEdit::Insert(int row, const std::string& link) {
  const QSignalBlocker still(links_);
  links_->insertRow(row);
  links_->setItem(row, kLink, new QTableWidgetItem(ToQt(link)));
  auto* const value = new QTableWidgetItem;
  value->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  links_->setItem(row, kValue, value);
}

void LinkEdit::Add() {
  const int row = links_->currentRow() + 1;
  Insert(row, {});
  links_->setCurrentCell(row, kLink);
  links_->editItem(links_->item(row, kLink));
  LinksChanged();
}

void LinkEdit::Remove() {
  asking_->GiveUp();
  links_->removeRow(links_->currentRow());
  LinksChanged();
  emit edited();
}

void LinkEdit::Move(int by) {
  asking_->GiveUp();
  const int from = links_->currentRow();
  const int to = from + by;
  {
    const QSignalBlocker still(links_);
    for (const int column : {kLink, kValue}) {
      QTableWidgetItem* const moved = links_->takeItem(from, column);
      links_->setItem(from, column, links_->takeItem(to, column));
      links_->setItem(to, column, moved);
    }
    links_->setCurrentCell(to, kLink);
  }
  LinksChanged();
  emit edited();
}

void LinkEdit::Test(int row) {
  while (row < links_->rowCount() && LinkAt(row).empty()) ++row;
  if (row >= links_->rowCount()) return;
  QTableWidgetItem* const value = links_->item(row, kValue);
  value->setForeground({});
  value->setToolTip({});
  value->setText(tr("asking…"));
  asking_->Begin([this, row, link = LinkAt(row)](Progress&) -> LatestWork::Answer {
    return [this, row, answer = AskLinks({link}).front()] {
      QTableWidgetItem* const shown = links_->item(row, kValue);
      const QString text = ToQt(answer.error.empty() ? answer.text : answer.error);
      shown->setText(text);
      shown->setToolTip(text);
      if (!answer.error.empty()) shown->setForeground(WrongTextColor());
      Test(row + 1);
    };
  });
}

void LinkEdit::SeeTyped(int row) {
  asking_->GiveUp();
  const std::vector<std::string> typed = SplitLinkList(LinkAt(row));
  {
    const QSignalBlocker still(links_);
    links_->item(row, kValue)->setText({});
    if (typed.size() > 1) {
      links_->item(row, kLink)->setText(ToQt(typed.front()));
      for (std::size_t i = 1; i < typed.size(); ++i) Insert(row + static_cast<int>(i), typed[i]);
    }
  }
  LinksChanged();
  emit edited();
}

void LinkEdit::LinksChanged() {
  const int row = links_->currentRow();
  remove_->setEnabled(row >= 0);
  up_->setEnabled(row > 0);
  down_->setEnabled(row >= 0 && row + 1 < links_->rowCount());
  test_->setEnabled(links_->rowCount() > 0);
}

}  // namespace tarnwick
