#include "desk/sources/arrays_edit.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <algorithm>
#include <iterator>

#include "base/error.h"
#include "data/import/source_place.h"
#include "desk/widgets/check_list.h"
#include "desk/widgets/text.h"
#include "desk/work/latest_work.h"
#include "sources/arrays/array_lines.h"
#include "sources/arrays/array_part.h"
#include "sources/arrays/array_source.h"

namespace tarnwick {
namespace {

constexpr int kLines = 6;
constexpr int kTyped = Qt::UserRole;

/// What a mark types: a line of what has too many axes to be a table.
std::string TypedFor(const NamedArray& array, const std::vector<NamedArray>& all) {
  return array.lengths.size() > 2 ? LineThrough(array, all) : array.FullPath();
}

QTreeWidgetItem* ItemOf(const NamedArray& array, const std::vector<NamedArray>& all) {
  auto* const item = new QTreeWidgetItem(
      {ToQt(array.FullPath()), ToQt(ShapeText(array)), ToQt(array.Attribute("long_name"))});
  item->setData(0, kTyped, ToQt(TypedFor(array, all)));
  if (array.numbers) {
    item->setCheckState(0, Qt::Unchecked);
  } else {
    item->setDisabled(true);
  }
  return item;
}

}  // namespace

ArraysEdit::ArraysEdit(QWidget* parent)
    : PlaceEdit(parent),
      file_(new QLabel(this)),
      paths_(new QLineEdit(this)),
      list_(new QTreeWidget(this)),
      arrays_(new LatestWork(this)) {
  file_->setObjectName("ArraysFile");
  file_->setWordWrap(true);
  file_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  paths_->setObjectName("ArrayPaths");
  paths_->setPlaceholderText(tr("all of the most common length"));
  list_->setObjectName("ArrayList");
  list_->setAccessibleName(tr("Arrays of the file"));
  list_->setHeaderLabels({tr("Array"), tr("Values"), tr("Meaning")});
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  ShowCheckBoxes(*list_);
  list_->setFixedHeight((kLines + 2) * fontMetrics().lineSpacing());
  auto* const form = new QFormLayout(this);
  form->setContentsMargins(0, 0, 0, 0);
  form->addRow(file_);
  form->addRow(tr("Arra&ys:"), paths_);
  form->addRow(list_);
  setFocusProxy(paths_);
  connect(paths_, &QLineEdit::textEdited, this, [this] {
    MarkTyped();
    emit edited();
  });
  connect(list_, &QTreeWidget::itemChanged, this, [this] {
    TypeMarked();
    emit edited();
  });
}

void ArraysEdit::Show(const TDSInfo& info) {
  const QSignalBlocker quiet(this);
  file_->setText(PathText(SourcePlace(info)));
  paths_->setText(ToQt(info.TablePart));
  MarkTyped();
  AskForArrays(info);
}

void ArraysEdit::AskForArrays(const TDSInfo& info) {
  arrays_->Begin(
      [this, file = SourcePlace(info).string()](Progress& progress) -> LatestWork::Answer {
        std::vector<NamedArray> found;
        try {
          found = ArraysOf(file, progress);
        } catch (const Error&) {
          // What keeps the file from being read is told where its rows are shown; paths can be typed.
        }
        return [this, found] {
          const QSignalBlocker quiet(list_);
          list_->clear();
          for (const NamedArray& array : found) list_->addTopLevelItem(ItemOf(array, found));
          list_->resizeColumnToContents(0);
          list_->resizeColumnToContents(1);
          MarkTyped();
        };
      });
}

void ArraysEdit::MarkTyped() {
  const QSignalBlocker quiet(list_);
  const std::vector<std::string> typed = ParseArrays(paths_->text().toStdString());
  for (int i = 0; i < list_->topLevelItemCount(); ++i) {
    QTreeWidgetItem* const item = list_->topLevelItem(i);
    if (item->isDisabled()) continue;
    const std::string path = item->text(0).toStdString();
    const bool named = std::ranges::any_of(
        typed, [&](const std::string& text) { return text == path || WithoutLine(text) == path; });
    item->setCheckState(0, named ? Qt::Checked : Qt::Unchecked);
  }
}

void ArraysEdit::TypeMarked() {
  const std::vector<std::string> typed = ParseArrays(paths_->text().toStdString());
  std::vector<std::string> marked;
  for (int i = 0; i < list_->topLevelItemCount(); ++i) {
    const QTreeWidgetItem* const item = list_->topLevelItem(i);
    if (item->checkState(0) != Qt::Checked) continue;
    const std::string path = item->text(0).toStdString();
    const std::size_t before = marked.size();
    std::ranges::copy_if(typed, std::back_inserter(marked), [&](const std::string& text) {
      return text == path || WithoutLine(text) == path;
    });
    if (marked.size() == before) marked.push_back(item->data(0, kTyped).toString().toStdString());
  }
  paths_->setText(ToQt(ArraysText(marked)));
}

std::optional<QString> ArraysEdit::Take(TDSInfo& info) const {
  info.TablePart = ArraysText(ParseArrays(paths_->text().toStdString()));
  return std::nullopt;
}

}  // namespace tarnwick
