#include "app/window/start_page.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "app/window/recent_pictures.h"
#include "app/window/recent_tile.h"
#include "desk/widgets/ink_icon.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kExamplesWidth = 186;
constexpr int kButtonWidth = 140;
constexpr int kIconSize = 22;
constexpr int kBetween = 4;  // tiles
constexpr int kAside = 24;   // between tiles and examples
constexpr int kMostColumns = 5;

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
  button->setMinimumWidth(kButtonWidth);
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

QToolButton* FileButton(const QString& path, QWidget* parent) {
  auto* button = new QToolButton(parent);
  button->setText(button->fontMetrics().elidedText(PathText(ToPath(path).filename()),
                                                   Qt::ElideMiddle, kExamplesWidth - 36));
  button->setIcon(InkIcon("graph"));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setAutoRaise(true);
  button->setToolTip(path);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setCursor(Qt::PointingHandCursor);
  return button;
}

}  // namespace

StartPage::StartPage(RecentPictures& pictures, QWidget* parent)
    : QWidget(parent),
      pictures_(pictures),
      session_(BigButton({}, "reopen", this)),
      buttons_(new QHBoxLayout),
      no_recent_(Subdued(tr("None yet"), this)),
      tiles_(new QGridLayout),
      examples_column_(new QVBoxLayout) {
  auto* new_graph = BigButton(tr("&New"), "new", this);
  auto* open = BigButton(tr("&Open"), "open", this);
  open->setDefault(true);
  session_->setObjectName("ReopenSession");
  session_->hide();
  connect(new_graph, &QPushButton::clicked, this, &StartPage::newWanted);
  connect(open, &QPushButton::clicked, this, &StartPage::openWanted);
  connect(session_, &QPushButton::clicked, this, &StartPage::sessionWanted);

  buttons_->setSpacing(12);
  buttons_->addWidget(open);
  buttons_->addWidget(new_graph);
  buttons_->addWidget(session_);
  buttons_->addStretch();
  auto* hint = Subdued(tr("Open a data file, or drop files here."), this);

  tiles_->setSpacing(kBetween);
  tiles_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  examples_column_->setSpacing(2);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(kAside);
  grid->setVerticalSpacing(10);
  grid->addWidget(Heading(tr("Tarnwick"), 1.9, this), 0, 0, 1, 2);
  grid->addWidget(hint, 1, 0, 1, 2);
  grid->addLayout(buttons_, 2, 0, 1, 2);
  grid->setRowMinimumHeight(3, 2);
  grid->addWidget(Heading(tr("Recent files"), 1.1, this), 4, 0);
  grid->addWidget(no_recent_, 5, 0, Qt::AlignTop);
  grid->addLayout(tiles_, 5, 0, Qt::AlignTop);
  grid->addWidget(Heading(tr("Examples"), 1.1, this), 4, 1);
  grid->addLayout(examples_column_, 5, 1, Qt::AlignTop);
  grid->setColumnMinimumWidth(0, RecentTile::kWidth);
  grid->setColumnMinimumWidth(1, kExamplesWidth);

  auto* middle = new QHBoxLayout;
  middle->addStretch();
  middle->addLayout(grid);
  middle->addStretch();
  auto* whole = new QVBoxLayout(this);
  whole->addStretch(1);
  whole->addLayout(middle);
  whole->addStretch(2);

  connect(&pictures_, &RecentPictures::pictureFound, this,
          [this](const QString& path, const QImage& picture) {
            if (RecentTile* const tile = TileOf(path)) tile->ShowPicture(picture);
          });
  connect(&pictures_, &RecentPictures::fileThere, this, [this](const QString& path) {
    if (RecentTile* const tile = TileOf(path)) tile->ShowThere();
  });
  connect(&pictures_, &RecentPictures::fileMissing, this, [this](const QString& path) {
    if (RecentTile* const tile = TileOf(path)) tile->ShowMissing();
  });
}

QSize StartPage::minimumSizeHint() const {
  const QMargins margins = layout()->contentsMargins();
  const int content =
      std::max(buttons_->minimumSize().width(), RecentTile::kWidth + kAside + kExamplesWidth);
  return {content + margins.left() + margins.right(), QWidget::minimumSizeHint().height()};
}

RecentTile* StartPage::TileOf(const QString& path) const {
  const auto found = by_path_.find(path);
  return found == by_path_.end() ? nullptr : found->second;
}

void StartPage::ShowFiles(const Files& recent, const Files& examples) {
  if (shown_.empty() || recent != recent_) {
    recent_ = recent;
    BuildTiles();
    if (isVisible()) pictures_.LookFor(recent_);
  }
  if (examples_column_->isEmpty() || examples != examples_) {
    examples_ = examples;
    BuildExamples();
  }
}

void StartPage::OfferSession(int windows) {
  session_->setText(windows == 1 ? tr("&Reopen Last Window")
                                 : tr("&Reopen %1 Windows").arg(windows));
  session_->setToolTip(tr("Opens what was open when the program was closed last"));
  session_->setVisible(windows > 0);
}

void StartPage::BuildTiles() {
  for (RecentTile* const tile : shown_) {
    tile->hide();
    tile->deleteLater();  // its click may be what led here
  }
  shown_.clear();
  by_path_.clear();
  for (const auto& file : recent_) {
    const QString path = PathText(file);
    auto* const tile = new RecentTile(path, this);
    connect(tile, &QToolButton::clicked, this, [this, path] { emit fileChosen(path); });
    shown_.push_back(tile);
    by_path_[path] = tile;
  }
  no_recent_->setVisible(recent_.empty());
  columns_ = 0;
  LayOutTiles();
}

void StartPage::BuildExamples() {
  Empty(*examples_column_);
  if (examples_.empty()) examples_column_->addWidget(Subdued(tr("Not installed"), this));
  for (const auto& file : examples_) {
    const QString path = PathText(file);
    auto* const button = FileButton(path, this);
    connect(button, &QToolButton::clicked, this, [this, path] { emit fileChosen(path); });
    examples_column_->addWidget(button);
  }
}

void StartPage::LayOutTiles() {
  const QMargins margins = layout()->contentsMargins();
  const int room = width() - margins.left() - margins.right() - kExamplesWidth - kAside;
  const int columns =
      std::clamp((room + kBetween) / (RecentTile::kWidth + kBetween), 1, kMostColumns);
  if (columns == columns_) return;
  columns_ = columns;
  int place = 0;
  for (RecentTile* const tile : shown_) {
    tiles_->addWidget(tile, place / columns, place % columns);
    ++place;
  }
}

void StartPage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // Once the page is seen.
  QTimer::singleShot(0, this, [this] { pictures_.LookFor(recent_); });
}

void StartPage::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  LayOutTiles();
}

}  // namespace tarnwick
