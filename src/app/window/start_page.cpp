#include "app/window/start_page.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kColumnWidth = 300;
constexpr int kIconSize = 22;

QLabel* Heading(const QString& text, double scale, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * scale);
  font.setBold(true);
  label->setFont(font);
  return label;
}

QPushButton* BigButton(const QString& text, std::string_view icon, QWidget* parent) {
  auto* button = new QPushButton(InkIcon(icon), text, parent);
  button->setIconSize({kIconSize, kIconSize});
  button->setMinimumHeight(kIconSize * 2);
  button->setMinimumWidth(kColumnWidth / 2 - 6);
  return button;
}

QLabel* Subdued(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setForegroundRole(QPalette::PlaceholderText);
  return label;
}

void Empty(QVBoxLayout& column) {
  while (QLayoutItem* item = column.takeAt(0)) {
    delete item->widget();
    delete item;
  }
}

QVBoxLayout* Column() {
  auto* column = new QVBoxLayout;
  column->setSpacing(2);
  return column;
}

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent), recent_(Column()), examples_(Column()) {
  auto* new_graph = BigButton(tr("&New"), "new", this);
  auto* open = BigButton(tr("&Open"), "open", this);
  open->setDefault(true);
  connect(new_graph, &QPushButton::clicked, this, &StartPage::newWanted);
  connect(open, &QPushButton::clicked, this, &StartPage::openWanted);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(12);
  buttons->addWidget(open);
  buttons->addWidget(new_graph);
  buttons->addStretch();
  auto* hint = Subdued(tr("Open a data file, or drop files here."), this);

  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(40);
  grid->setVerticalSpacing(14);
  grid->addWidget(Heading(tr("Tarnwick"), 1.9, this), 0, 0, 1, 2);
  grid->addWidget(hint, 1, 0, 1, 2);
  grid->addLayout(buttons, 2, 0, 1, 2);
  grid->setRowMinimumHeight(3, 6);
  grid->addLayout(recent_, 4, 0, Qt::AlignTop);
  grid->addLayout(examples_, 4, 1, Qt::AlignTop);
  grid->setColumnMinimumWidth(0, kColumnWidth);
  grid->setColumnMinimumWidth(1, kColumnWidth);

  auto* middle = new QHBoxLayout;
  middle->addStretch();
  middle->addLayout(grid);
  middle->addStretch();
  auto* whole = new QVBoxLayout(this);
  whole->addStretch(1);
  whole->addLayout(middle);
  whole->addStretch(2);
}

void StartPage::ShowFiles(const std::vector<std::filesystem::path>& recent,
                          const std::vector<std::filesystem::path>& examples) {
  ShowColumn(*recent_, tr("Recent files"), tr("None yet"), recent);
  ShowColumn(*examples_, tr("Examples"), tr("Not installed"), examples);
}

void StartPage::ShowColumn(QVBoxLayout& column, const QString& heading, const QString& none,
                           const std::vector<std::filesystem::path>& files) {
  Empty(column);
  column.addWidget(Heading(heading, 1.1, this));
  if (files.empty()) {
    column.addWidget(Subdued(none, this));
  }
  for (const auto& file : files) {
    const QString path = PathText(file);
    auto* button = new QToolButton(this);
    button->setText(
        fontMetrics().elidedText(PathText(file.filename()), Qt::ElideMiddle, kColumnWidth - 40));
    button->setIcon(InkIcon("graph"));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setToolTip(path);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setCursor(Qt::PointingHandCursor);
    connect(button, &QToolButton::clicked, this, [this, path] { emit fileChosen(path); });
    column.addWidget(button);
  }
}

}  // namespace tarnwick
