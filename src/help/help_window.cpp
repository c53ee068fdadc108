#include "help/help_window.h"

#include <QAction>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QHelpSearchQueryWidget>
#include <QHelpSearchResultWidget>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include "base/error.h"
#include "desk/widgets/text.h"
#include "help/help_browser.h"

namespace tarnwick {
namespace {

constexpr int kFirstWidth = 940;
constexpr int kFirstHeight = 640;
constexpr int kWidthOfWays = 270;

QUrl FirstPage() {
  return QUrl("qthelp://tarnwick/help/index.html");
}

}  // namespace

HelpWindow::HelpWindow(const std::filesystem::path& file, QWidget* parent)
    : QMainWindow(parent, Qt::Window), engine_(folder_.filePath("tarnwick.qhc")) {
  setObjectName("HelpWindow");
  setWindowTitle(tr("Tarnwick Help"));
  engine_.setReadOnly(false);
  if (!engine_.setupData() || !engine_.registerDocumentation(PathText(file))) {
    throw Error("The help cannot be shown: " + engine_.error().toStdString());
  }
  ways_ = new QTabWidget(this);
  ways_->setDocumentMode(true);
  auto* contents = engine_.contentWidget();
  connect(contents, &QHelpContentWidget::linkActivated, this, &HelpWindow::Show);
  connect(contents, &QAbstractItemView::clicked, contents, [this](const QModelIndex& at) {
    if (const auto* item = engine_.contentModel()->contentItemAt(at)) Show(item->url());
  });
  ways_->addTab(contents, tr("&Contents"));
  index_ = BuildIndex();
  ways_->addTab(index_, tr("&Index"));
  search_ = BuildSearch();
  ways_->addTab(search_, tr("&Search"));

  page_ = new HelpBrowser(engine_, this);
  auto* halves = new QSplitter(this);
  halves->addWidget(ways_);
  halves->addWidget(page_);
  halves->setStretchFactor(1, 1);
  halves->setSizes({kWidthOfWays, kFirstWidth - kWidthOfWays});
  setCentralWidget(halves);
  BuildTools();
  resize(kFirstWidth, kFirstHeight);
  engine_.contentModel()->createContents({});
  engine_.indexModel()->createIndex({});
  connect(engine_.contentModel(), &QHelpContentModel::contentsCreated, contents,
          [contents] { contents->expandToDepth(0); });
  Show(FirstPage());
}

QWidget* HelpWindow::BuildIndex() {
  auto* box = new QWidget(this);
  auto* column = new QVBoxLayout(box);
  auto* word = new QLineEdit(box);
  word->setObjectName("HelpWord");
  word->setPlaceholderText(tr("Beginning of a word"));
  word->setAccessibleName(word->placeholderText());
  QHelpIndexWidget* words = engine_.indexWidget();
  auto* none = new QLabel(tr("No entry begins so. Enter looks through all pages."), box);
  none->setWordWrap(true);
  none->hide();
  connect(word, &QLineEdit::textChanged, words, [words, none](const QString& text) {
    words->filterIndices(text);
    none->setVisible(!text.isEmpty() && words->model()->rowCount() == 0);
  });
  connect(word, &QLineEdit::returnPressed, words, [this, words, word] {
    if (words->model()->rowCount() == 0) return LookThroughPages(word->text());
    words->activateCurrentItem();
  });
  const auto show = [this](const QHelpLink& link) { Show(link.url); };
  connect(words, &QHelpIndexWidget::documentActivated, this, show);
  connect(words, &QHelpIndexWidget::documentsActivated, this,
          [show](const QList<QHelpLink>& links) { show(links.front()); });
  connect(words, &QAbstractItemView::clicked, words, [words] { words->activateCurrentItem(); });
  column->addWidget(word);
  column->addWidget(none);
  column->addWidget(words);
  box->setFocusProxy(word);
  return box;
}

QWidget* HelpWindow::BuildSearch() {
  auto* box = new QWidget(this);
  auto* column = new QVBoxLayout(box);
  QHelpSearchEngine* search = engine_.searchEngine();
  column->addWidget(search->queryWidget());
  column->addWidget(search->resultWidget(), 1);
  box->setFocusProxy(search->queryWidget());
  connect(search->queryWidget(), &QHelpSearchQueryWidget::search, search,
          [search] { search->search(search->queryWidget()->searchInput()); });
  connect(search->resultWidget(), &QHelpSearchResultWidget::requestShowLink, this,
          &HelpWindow::Show);
  // The words are gathered when somebody first wants to search.
  connect(ways_, &QTabWidget::currentChanged, this, [this, search, gathered = false](int) mutable {
    ways_->currentWidget()->setFocus();
    if (gathered || ways_->currentWidget() != search_) return;
    gathered = true;
    search->scheduleIndexDocumentation();
  });
  return box;
}

void HelpWindow::LookThroughPages(const QString& words) {
  QHelpSearchEngine* search = engine_.searchEngine();
  search->queryWidget()->setSearchInput(words);
  const auto look = [search, words] { search->search(words); };
  // The first time the words of the pages are gathered before.
  connect(search, &QHelpSearchEngine::indexingFinished, this, look, Qt::SingleShotConnection);
  ways_->setCurrentWidget(search_);
  look();
}

void HelpWindow::BuildTools() {
  QToolBar* tools = addToolBar(tr("Pages"));
  tools->setMovable(false);
  tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
  QAction* back = tools->addAction(tr("Back"), page_, &QTextBrowser::backward);
  back->setShortcut(QKeySequence::Back);
  back->setEnabled(false);
  connect(page_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  QAction* forward = tools->addAction(tr("Forward"), page_, &QTextBrowser::forward);
  forward->setShortcut(QKeySequence::Forward);
  forward->setEnabled(false);
  connect(page_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
  tools->addAction(tr("First Page"), this, [this] { Show(FirstPage()); });
}

void HelpWindow::Show(const QUrl& page) {
  page_->setSource(page);
}

void HelpWindow::ShowTopic(const QStringList& ids) {
  QUrl page = FirstPage();
  for (const QString& id : ids) {
    const QList<QHelpLink> places = engine_.documentsForIdentifier(id);
    if (places.isEmpty()) continue;
    page = places.front().url;
    break;
  }
  Show(page);
  page_->setFocus();
}

void HelpWindow::ShowIndex() {
  ways_->setCurrentWidget(index_);
  index_->setFocus();
}

}  // namespace tarnwick
