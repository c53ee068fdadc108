#include "desk/prompts/save_dialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <utility>

#include "desk/prompts/file_columns.h"
#include "desk/prompts/file_filters.h"
#include "desk/widgets/text.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {
namespace {

/// The ending that names without one get under a filter: the filter's own, else that of graph files.
QString SuffixOf(const FileFilter& filter) {
  const FileKind& kind = *filter.kinds.front();
  return ToQt((kind.write ? kind : FileKinds().front()).ending.substr(1));
}

}  // namespace

std::string SavingKeeps(const std::filesystem::path& name, const SaveProposal& proposal) {
  const FileKind& kind = KindOf(name);
  if (!kind.write) {
    return "No kind of file ends in \"" + name.extension().string() + "\": nothing is written";
  }
  if (kind.needs == FileNeeds::DataSet && proposal.data_set_name.empty()) {
    return "There is no DataSet to write";
  }
  if (kind.needs != FileNeeds::Size) return std::string(kind.meaning);
  return "Picture, " + std::to_string(proposal.picture.width) + " x " +
         std::to_string(proposal.picture.height) + " pixels: not the whole graph";
}

SaveDialog::SaveDialog(SaveProposal proposal, QWidget* parent)
    : QFileDialog(parent, QObject::tr("Save As"), PathText(proposal.folder)),
      proposal_(std::move(proposal)) {
  // The desktop's own dialog has no room for the line that tells what an ending means.
  setOption(QFileDialog::DontUseNativeDialog);
  setAcceptMode(QFileDialog::AcceptSave);
  setFileMode(QFileDialog::AnyFile);
  setOption(QFileDialog::HideNameFilterDetails);
  setOption(QFileDialog::DontConfirmOverwrite);
  BuildMeaning();
  ShowWholeColumns(*this);
  const std::vector<FileFilter> filters = SaveFilters();
  setNameFilters(FilterTexts(filters));
  setDefaultSuffix(SuffixOf(filters.front()));
  selectFile(PathText(proposal_.graph_name));
  connect(this, &QFileDialog::filterSelected, this, &SaveDialog::TakeFilter);
  ShowMeaning();
}

void SaveDialog::BuildMeaning() {
  meaning_ = new QLabel(this);
  meaning_->setObjectName("meaning");
  auto* const grid = qobject_cast<QGridLayout*>(layout());
  auto* const name = findChild<QLineEdit*>("fileNameEdit");
  if (grid == nullptr || name == nullptr) return;  // another version of Qt arranges it otherwise
  grid->addWidget(meaning_, grid->rowCount(), 0, 1, grid->columnCount());
  connect(name, &QLineEdit::textChanged, this, &SaveDialog::ShowMeaning);
  // A list of names would cover that line and take the first Return for itself.
  name->setCompleter(nullptr);
}

void SaveDialog::TakeFilter(const QString& chosen) {
  const std::vector<FileFilter> filters = SaveFilters();
  const auto filter = std::ranges::find_if(filters, [&](const FileFilter& one) {
    return ToQt(one.text) == chosen || FilterText(one) == chosen;
  });
  if (filter == filters.end()) return;
  setDefaultSuffix(SuffixOf(*filter));
  const bool data_set =
      filter->kinds.front()->needs == FileNeeds::DataSet && !proposal_.data_set_name.empty();
  selectFile(PathText(data_set ? proposal_.data_set_name : proposal_.graph_name));
  ShowMeaning();
}

std::optional<std::filesystem::path> SaveDialog::Chosen() const {
  const auto* const name = findChild<QLineEdit*>("fileNameEdit");
  const QStringList files = selectedFiles();
  if (files.isEmpty() || (name != nullptr && name->text().isEmpty())) return std::nullopt;
  return ToPath(files.front());
}

void SaveDialog::ShowMeaning() {
  const std::optional<std::filesystem::path> name = Chosen();
  meaning_->setText(name ? ToQt(SavingKeeps(*name, proposal_)) : QString());
}

}  // namespace tarnwick
