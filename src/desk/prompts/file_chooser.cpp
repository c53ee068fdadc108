#include "desk/prompts/file_chooser.h"

#include <QFileDialog>
#include <algorithm>
#include <system_error>

#include "desk/prompts/file_columns.h"
#include "desk/prompts/file_filters.h"
#include "desk/prompts/picture_size_dialog.h"
#include "desk/prompts/read_folder_dialog.h"
#include "desk/prompts/save_dialog.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

/// The entry under which every file is shown.
QString EveryFile(const std::vector<FileFilter>& filters) {
  const auto entry = std::ranges::find_if(
      filters, [](const FileFilter& one) { return one.kinds.front()->ending.empty(); });
  return FilterText(entry == filters.end() ? filters.back() : *entry);
}

bool IsAccepted(QFileDialog& dialog) {
  ShowWholeColumns(dialog);
  return dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
}

/// What a dialog for fitting functions was left with.
std::optional<std::filesystem::path> ChosenFunction(QFileDialog& dialog) {
  dialog.setNameFilters({QObject::tr("Fitting Functions (*.tfn)"), QObject::tr("All Files (*)")});
  if (!IsAccepted(dialog)) return std::nullopt;
  return ToPath(dialog.selectedFiles().front());
}

}  // namespace

std::vector<std::filesystem::path> DialogFileChooser::FilesToOpen(
    const std::filesystem::path& folder) {
  QFileDialog dialog(parent_, QObject::tr("Open"), PathText(folder));
  dialog.setFileMode(QFileDialog::ExistingFiles);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  const std::vector<FileFilter> filters = OpenFilters();
  dialog.setNameFilters(FilterTexts(filters));
  // Whoever opens a file for the first time has data, of whatever extension.
  dialog.selectNameFilter(EveryFile(filters));
  std::vector<std::filesystem::path> chosen;
  if (!IsAccepted(dialog)) return chosen;
  for (const QString& name : dialog.selectedFiles()) chosen.push_back(ToPath(name));
  return chosen;
}

std::optional<FolderChoice> DialogFileChooser::FolderToOpen(const std::filesystem::path& folder) {
  std::error_code gone;  // then there is nothing to propose
  const std::filesystem::path proposed =
      folder.empty() ? std::filesystem::current_path(gone) : folder;
  Txy_ReadFolder dialog(proposed, parent_);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Choice();
}

std::optional<std::filesystem::path> DialogFileChooser::FileToSave(const SaveProposal& proposal) {
  SaveDialog dialog(proposal, parent_);
  return dialog.exec() == QDialog::Accepted ? dialog.Chosen() : std::nullopt;
}

std::optional<std::filesystem::path> DialogFileChooser::FileToPrint(const SaveProposal& proposal) {
  QFileDialog dialog(parent_, QObject::tr("Print into File"), PathText(proposal.folder));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setNameFilter(QObject::tr("PDF File (*.pdf)"));
  dialog.setDefaultSuffix("pdf");
  dialog.selectFile(PathText(proposal.graph_name) + ".pdf");
  if (!IsAccepted(dialog)) return std::nullopt;
  return ToPath(dialog.selectedFiles().front());
}

std::optional<std::filesystem::path> DialogFileChooser::TableToSave(
    const std::filesystem::path& proposal) {
  QFileDialog dialog(parent_, QObject::tr("Save Table"), PathText(proposal.parent_path()));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setNameFilters({QObject::tr("Table, commas between columns (*.csv)"),
                         QObject::tr("Table, tabs between columns (*.txt *.dat)")});
  dialog.setDefaultSuffix("csv");
  dialog.setOption(QFileDialog::DontConfirmOverwrite);  // whoever asked asks
  dialog.selectFile(PathText(proposal.filename()));
  if (!IsAccepted(dialog)) return std::nullopt;
  return ToPath(dialog.selectedFiles().front());
}

std::optional<PictureOptions> DialogFileChooser::SizeOfPicture(const PictureOptions& proposal) {
  PictureSizeDialog dialog(proposal, parent_);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Options();
}

std::optional<std::filesystem::path> DialogFileChooser::FunctionToLoad(
    const std::filesystem::path& folder) {
  QFileDialog dialog(parent_, QObject::tr("Load Function"), PathText(folder));
  dialog.setObjectName("OpenDialog1");
  dialog.setFileMode(QFileDialog::ExistingFile);
  return ChosenFunction(dialog);
}

std::optional<std::filesystem::path> DialogFileChooser::FunctionToSave(
    const std::filesystem::path& proposal) {
  QFileDialog dialog(parent_, QObject::tr("Save Function"), PathText(proposal.parent_path()));
  dialog.setObjectName("SaveDialog1");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);  // the name that counts has another ending
  dialog.selectFile(PathText(proposal.filename()));
  return ChosenFunction(dialog);
}

}  // namespace tarnwick
