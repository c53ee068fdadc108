#include "editors/data/points_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <limits>

#include "editors/data/points_model.h"

namespace tarnwick {
namespace {

constexpr int kRowMargin = 6;     // pixels
constexpr int kRowsPerNotch = 3;  // of the wheel
constexpr int kNotch = 120;
constexpr int kColumnWidth = 118;
constexpr int kIdWidth = 70;

}  // namespace

PointsView::PointsView(PointsModel& model, QWidget* parent)
    : QWidget(parent), model_(model), table_(new QTableView(this)), bar_(new QScrollBar(this)) {
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(0);
  line->addWidget(table_, 1);
  line->addWidget(bar_);
  table_->setObjectName("Points");
  table_->setAccessibleName(tr("Points of the DataSet"));
  table_->setModel(&model_);
  table_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  table_->setSelectionMode(QAbstractItemView::NoSelection);
  table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargin);
  table_->horizontalHeader()->setDefaultSectionSize(kColumnWidth);
  table_->installEventFilter(this);
  table_->viewport()->installEventFilter(this);
  bar_->setObjectName("PointsBar");
  setFocusProxy(table_);
  connect(bar_, &QScrollBar::valueChanged, this,
          [this](int value) { ShowFrom(static_cast<std::size_t>(value)); });
}

int PointsView::RowsInSight() const {
  return std::max(table_->viewport()->height() / table_->verticalHeader()->defaultSectionSize(), 1);
}

void PointsView::PointsChanged() {
  if (is_marked_ && std::max(anchor_, current_) >= model_.Size()) is_marked_ = false;
  Resized();
  table_->setColumnWidth(0, kIdWidth);
  const QString widest = QString::number(model_.Size());
  table_->verticalHeader()->setFixedWidth(fontMetrics().horizontalAdvance(widest) + 3 * kRowMargin);
  ShowMark();
}

void PointsView::Resized() {
  const auto rows = static_cast<std::size_t>(RowsInSight());
  const std::size_t last = model_.Size() > rows ? model_.Size() - rows : 0;
  const std::size_t first = std::min(model_.First(), last);
  {
    const QSignalBlocker blocker(bar_);
    bar_->setRange(0,
                   static_cast<int>(std::min<std::size_t>(last, std::numeric_limits<int>::max())));
    bar_->setPageStep(static_cast<int>(rows));
    bar_->setValue(static_cast<int>(first));
  }
  model_.ShowFrom(first, static_cast<int>(rows));
}

void PointsView::ShowFrom(std::size_t first) {
  const int column = std::max(table_->currentIndex().column(), 0);
  model_.ShowFrom(first, RowsInSight());
  if (is_marked_ && current_ >= first &&
      current_ < first + static_cast<std::size_t>(model_.rowCount())) {
    table_->setCurrentIndex(model_.index(static_cast<int>(current_ - first), column));
  }
}

void PointsView::GoTo(std::size_t point) {
  MoveTo(point, Qt::NoModifier);
}

void PointsView::MoveTo(std::size_t point, Qt::KeyboardModifiers modifiers) {
  if (model_.Size() == 0) return;
  current_ = std::min(point, model_.Size() - 1);
  if (!is_marked_ || (modifiers & Qt::ShiftModifier) == 0) anchor_ = current_;
  is_marked_ = true;
  const auto rows = static_cast<std::size_t>(RowsInSight());
  const std::size_t first = model_.First();
  if (current_ < first) bar_->setValue(static_cast<int>(current_));
  if (current_ >= first + rows) bar_->setValue(static_cast<int>(current_ - rows + 1));
  ShowFrom(model_.First());
  ShowMark();
}

void PointsView::ShowMark() {
  model_.Mark(Marked());
  emit markedChanged();
}

std::optional<std::pair<std::size_t, std::size_t>> PointsView::Marked() const {
  if (!is_marked_) return std::nullopt;
  return std::minmax(anchor_, current_);
}

bool PointsView::TakeKey(int key, Qt::KeyboardModifiers modifiers) {
  const auto page = static_cast<std::size_t>(RowsInSight());
  const std::size_t at = is_marked_ ? current_ : model_.First();
  const auto back = [at](std::size_t by) { return at > by ? at - by : 0; };
  switch (key) {
    case Qt::Key_Up:
      MoveTo(back(1), modifiers);
      return true;
    case Qt::Key_Down:
      MoveTo(at + 1, modifiers);
      return true;
    case Qt::Key_PageUp:
      MoveTo(back(page), modifiers);
      return true;
    case Qt::Key_PageDown:
      MoveTo(at + page, modifiers);
      return true;
    case Qt::Key_Home:
      MoveTo(0, modifiers);
      return true;
    case Qt::Key_End:
      MoveTo(std::numeric_limits<std::size_t>::max(), modifiers);
      return true;
    default:
      return false;
  }
}

bool PointsView::TakeEditKey(QKeyEvent& event) {
  for (const auto key : {QKeySequence::Delete, QKeySequence::Copy, QKeySequence::Paste}) {
    if (!event.matches(key)) continue;
    event.accept();  // the window's commands of these keys are of the whole graph
    if (event.type() == QEvent::KeyPress) emit keyPressed(key);
    return true;
  }
  return false;
}

bool PointsView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && watched == table_->viewport()) Resized();
  if (event->type() == QEvent::Wheel && watched == table_->viewport()) {
    const int notches = static_cast<QWheelEvent*>(event)->angleDelta().y() * kRowsPerNotch / kNotch;
    bar_->setValue(bar_->value() - notches);
    return true;
  }
  if (event->type() == QEvent::ShortcutOverride && watched == table_) {
    return TakeEditKey(*static_cast<QKeyEvent*>(event));
  }
  if (event->type() == QEvent::KeyPress && watched == table_) {
    auto* const key = static_cast<QKeyEvent*>(event);
    return TakeEditKey(*key) || TakeKey(key->key(), key->modifiers());
  }
  if (event->type() == QEvent::MouseButtonPress && watched == table_->viewport()) {
    const auto* press = static_cast<QMouseEvent*>(event);
    const QModelIndex index = table_->indexAt(press->position().toPoint());
    if (index.isValid()) {
      table_->setCurrentIndex(index);
      MoveTo(model_.First() + static_cast<std::size_t>(index.row()), press->modifiers());
    }
  }
  return false;
}

}  // namespace tarnwick
