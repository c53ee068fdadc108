#include "editors/data/preview_table.h"

#include <QHeaderView>
#include <QMenu>
#include <algorithm>
#include <array>

#include "desk/widgets/names_apart.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kWidestColumn = 160;
constexpr double kTint = 0.3;  // of the colour in the paper's

/// For X, Y, errors of Y, errors of X, another Y: blue, orange, paler ones, green.
constexpr std::array kColors = {QColor(0x3b, 0x82, 0xc4), QColor(0xe0, 0x8a, 0x1e),
                                QColor(0xe8, 0xb8, 0x7a), QColor(0x9c, 0xc0, 0xe0),
                                QColor(0x3f, 0xa3, 0x6a)};

QColor Tinted(const QColor& paper, const QColor& ink) {
  const auto mix = [](int a, int b) { return static_cast<int>(a + kTint * (b - a)); };
  return {mix(paper.red(), ink.red()), mix(paper.green(), ink.green()),
          mix(paper.blue(), ink.blue())};
}

}  // namespace

PreviewTable::PreviewTable(QWidget* parent) : QTableWidget(parent) {
  setObjectName("Preview");
  setAccessibleName(tr("First lines of the source"));
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::NoSelection);
  setWordWrap(false);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  setHorizontalHeader(new NameHeader(this));
  horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
  horizontalHeader()->setToolTip(tr("A click chooses what the column is read for"));
  connect(horizontalHeader(), &QWidget::customContextMenuRequested, this, &PreviewTable::OfferUses);
  connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
    const QHeaderView& header = *horizontalHeader();
    OfferUses({header.sectionViewportPosition(column), header.height()});
  });
}

void PreviewTable::ShowPreview(const SourcePreview& preview, const std::vector<int>& uses) {
  columns_ = preview.columns;
  uses_ = uses;
  clear();
  clearSpans();
  setRowCount(static_cast<int>(preview.lines.size()));
  setColumnCount(static_cast<int>(columns_.size()));
  QStringList names;
  for (const std::string& name : columns_) names << ToQt(name);
  setHorizontalHeaderLabels(names);
  QStringList numbers;
  for (const PreviewedLine& line : preview.lines) numbers << QString::number(line.number);
  setVerticalHeaderLabels(numbers);
  QFont bold = font();
  bold.setBold(true);
  for (int row = 0; row < rowCount(); ++row) {
    const PreviewedLine& line = preview.lines[static_cast<std::size_t>(row)];
    const bool cut = IsCut(line.role);
    const int fields = std::min(static_cast<int>(line.fields.size()), columnCount());
    for (int column = 0; column < fields; ++column) {
      auto* item = new QTableWidgetItem(ToQt(line.fields[static_cast<std::size_t>(column)]));
      if (line.role == LineRole::Row) item->setBackground(ColorOf(column, uses));
      if (line.role == LineRole::Names) item->setFont(bold);
      if (line.role != LineRole::Row && line.role != LineRole::Names) {
        item->setForeground(palette().color(QPalette::Disabled, QPalette::Text));
      }
      setItem(row, column, item);
    }
    if (!cut && columnCount() > 1) setSpan(row, 0, 1, columnCount());
  }
  resizeColumnsToContents();
  const auto read = std::ranges::find_if(preview.lines, [](const PreviewedLine& line) {
    return line.role == LineRole::Row || line.role == LineRole::Names;
  });
  if (read != preview.lines.end() && columnCount() > 0)
    scrollTo(model()->index(static_cast<int>(read - preview.lines.begin()), 0),
             QAbstractItemView::PositionAtTop);
  for (int column = 0; column < columnCount(); ++column) {
    setColumnWidth(column, std::min(columnWidth(column), kWidestColumn));
  }
}

QColor PreviewTable::ColorOf(int column, const std::vector<int>& uses) const {
  const QColor paper = palette().color(QPalette::Base);
  const auto use = std::ranges::find(uses, column);
  if (use == uses.end()) return paper;
  const auto role = static_cast<std::size_t>(use - uses.begin());
  return Tinted(paper, kColors[std::min(role, kColors.size() - 1)]);
}

bool PreviewTable::IsAnotherY(int column) const {
  const auto use = std::ranges::find(uses_, column);
  return use - uses_.begin() >= static_cast<std::ptrdiff_t>(ColumnUse::AnotherY) &&
         use != uses_.end();
}

void PreviewTable::OfferUses(QPoint at) {
  const int column = horizontalHeader()->logicalIndexAt(at);
  if (column < 0 || static_cast<std::size_t>(column) >= columns_.size()) return;
  const QString name = ToQt(columns_[static_cast<std::size_t>(column)]);
  QMenu menu(this);
  const std::pair<QString, ColumnUse> uses[] = {
      {tr("Use as &X"), ColumnUse::X},
      {tr("Use as &Y"), ColumnUse::Y},
      {tr("Use as &Errors of Y"), ColumnUse::YError},
      {tr("Use as E&rrors of X"), ColumnUse::XError},
      {tr("Draw as &Another DataSet"), ColumnUse::AnotherY}};
  for (const auto& [text, use] : uses) {
    QAction* const action = menu.addAction(text);
    if (use == ColumnUse::AnotherY) {
      action->setCheckable(true);
      action->setChecked(IsAnotherY(column));
    }
    connect(action, &QAction::triggered, this,
            [this, name, use = use] { emit columnChosen(name, use); });
  }
  menu.exec(horizontalHeader()->mapToGlobal(at));
}

}  // namespace tarnwick
