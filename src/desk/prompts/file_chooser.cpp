#include "desk/prompts/file_chooser.h"

#include <QFileDialog>

#include "desk/prompts/picture_size_dialog.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

/// One entry of the Save dialog's filter list and the extension that a name without one gets.
struct SaveFilter {
  const char* text;
  const char* extension;
};

// The texts are shown as they stand; the patterns in the last parentheses are hidden.
constexpr SaveFilter kSaveFilters[] = {
    {"Tarnwick Graph File  (*.tgr) (*.tgr *.TGR)", "tgr"},
    {"Tarnwick Graph Template (*.ttp) (*.ttp *.TTP)", "ttp"},
    {"Tarnwick DataSet File (*.tds) (*.tds *.TDS)", "tds"},
    {"Data File  (*.dat) (*.dat *.DAT)", "dat"},
    {"Windows Metafile (*.wmf) (*.wmf *.WMF)", "wmf"},
    {"Bitmap (*.bmp) (*.bmp *.BMP)", "bmp"},
    {"JPEG Image (*jpg) (*.jpg *.JPG)", "jpg"},
    {"All Files (*.*) (*)", "tgr"},
};
constexpr int kDataSetFilter = 2;

const QStringList& OpenFilters() {
  static const QStringList kFilters = {
      "Tarnwick Graphs  (*.tgr) (*.tgr *.TGR)",
      "Tarnwick Templates  (*.ttp) (*.ttp *.TTP)",
      "Data Files (*.dat;*.txt) (*.dat *.txt *.DAT *.TXT)",
      "All Files (*.*) (*)",
  };
  return kFilters;
}

}  // namespace

std::vector<std::filesystem::path> DialogFileChooser::FilesToOpen(
    const std::filesystem::path& folder) {
  QFileDialog dialog(parent_, QObject::tr("Open"), PathText(folder));
  dialog.setFileMode(QFileDialog::ExistingFiles);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilters(OpenFilters());
  // Whoever opens a file for the first time has data, of whatever extension.
  dialog.selectNameFilter(OpenFilters().back());
  std::vector<std::filesystem::path> chosen;
  if (dialog.exec() != QDialog::Accepted) return chosen;
  for (const QString& name : dialog.selectedFiles()) chosen.push_back(ToPath(name));
  return chosen;
}

std::optional<std::filesystem::path> DialogFileChooser::FileToSave(const SaveProposal& proposal) {
  QFileDialog dialog(parent_, QObject::tr("Save As"), PathText(proposal.folder));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  QStringList filters;
  for (const SaveFilter& filter : kSaveFilters) filters.append(filter.text);
  dialog.setNameFilters(filters);
  dialog.setDefaultSuffix(kSaveFilters[0].extension);
  dialog.selectFile(PathText(proposal.graph_name));

  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& chosen) {
    const auto shown = [&](qsizetype index) {
      return filters[index] == chosen || filters[index].startsWith(chosen + " (");
    };
    for (qsizetype i = 0; i < filters.size(); ++i) {
      if (!shown(i)) continue;
      dialog.setDefaultSuffix(kSaveFilters[i].extension);
      const bool data_set = i == kDataSetFilter && !proposal.data_set_name.empty();
      dialog.selectFile(PathText(data_set ? proposal.data_set_name : proposal.graph_name));
    }
  });
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return ToPath(dialog.selectedFiles().front());
}

std::optional<std::filesystem::path> DialogFileChooser::FileToPrint(const SaveProposal& proposal) {
  QFileDialog dialog(parent_, QObject::tr("Print into File"), PathText(proposal.folder));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setNameFilter(QObject::tr("PDF File (*.pdf)"));
  dialog.setDefaultSuffix("pdf");
  dialog.selectFile(PathText(proposal.graph_name) + ".pdf");
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return ToPath(dialog.selectedFiles().front());
}

std::optional<PictureOptions> DialogFileChooser::SizeOfPicture(const PictureOptions& proposal) {
  PictureSizeDialog dialog(proposal, parent_);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Options();
}

}  // namespace tarnwick
