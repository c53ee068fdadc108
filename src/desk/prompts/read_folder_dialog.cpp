#include "desk/prompts/read_folder_dialog.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "base/number_text.h"
#include "desk/prompts/folder_files.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kMostNamed = 6;
constexpr int kWidth = 460;

/// "12 files: a.dat, b.dat, …"
QString Described(const std::vector<std::filesystem::path>& files) {
  QStringList names;
  for (const auto& file : files) {
    if (names.size() == kMostNamed) {
      names.append(QStringLiteral("…"));
      break;
    }
    names.append(PathText(file.filename()));
  }
  const auto count = static_cast<std::int64_t>(files.size());
  return ToQt(Counted(count, "file")) + ": " + names.join(", ");
}

}  // namespace

Txy_ReadFolder::Txy_ReadFolder(const std::filesystem::path& folder, QWidget* parent)
    : QDialog(parent),
      folder_(new QLineEdit(PathText(folder), this)),
      mask_(new QLineEdit("*.*", this)),
      files_(new QLabel(this)) {
  setObjectName("Txy_ReadFolder");
  setWindowTitle(tr("Open Directory"));
  folder_->setObjectName("Folder");
  mask_->setObjectName("Mask");
  mask_->setToolTip(tr("Which files: *.* for all, several masks with ; between them"));
  files_->setObjectName("Files");
  files_->setWordWrap(true);
  files_->setAlignment(Qt::AlignTop);
  files_->setMinimumHeight(3 * fontMetrics().height());
  auto* const browse = new QPushButton(tr("&Browse..."), this);
  browse->setAutoDefault(false);
  auto* const buttons =
      new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, this);
  open_ = buttons->button(QDialogButtonBox::Open);
  open_->setDefault(true);
  auto* const folder_label = new QLabel(tr("&Folder:"), this);
  auto* const mask_label = new QLabel(tr("File &mask:"), this);
  folder_label->setBuddy(folder_);
  mask_label->setBuddy(mask_);
  auto* const grid = new QGridLayout(this);
  grid->addWidget(folder_label, 0, 0);
  grid->addWidget(folder_, 0, 1);
  grid->addWidget(browse, 0, 2);
  grid->addWidget(mask_label, 1, 0);
  grid->addWidget(mask_, 1, 1);
  grid->addWidget(files_, 2, 1, 1, 2);
  grid->addWidget(buttons, 3, 0, 1, 3);
  grid->setRowStretch(2, 1);
  setMinimumWidth(kWidth);
  connect(browse, &QPushButton::clicked, this, &Txy_ReadFolder::Browse);
  connect(folder_, &QLineEdit::textChanged, this, &Txy_ReadFolder::ShowFiles);
  connect(mask_, &QLineEdit::textChanged, this, &Txy_ReadFolder::ShowFiles);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  ShowFiles();
}

FolderChoice Txy_ReadFolder::Choice() const {
  return {ToPath(folder_->text()), mask_->text().toStdString()};
}

void Txy_ReadFolder::Browse() {
  const QString chosen = QFileDialog::getExistingDirectory(this, tr("Folder"), folder_->text());
  if (!chosen.isEmpty()) folder_->setText(chosen);
}

void Txy_ReadFolder::ShowFiles() {
  const FolderChoice choice = Choice();
  std::error_code ignored;  // what cannot be looked at is no folder
  const bool is_folder = std::filesystem::is_directory(choice.folder, ignored);
  const auto files = FilesOfFolder(choice.folder, choice.mask);
  const QString no_file = is_folder ? tr("No file here has such a name.") : QString();
  MarkWrong(*folder_, is_folder ? QString() : tr("There is no such folder."));
  MarkWrong(*mask_, is_folder && files.empty() ? no_file : QString());
  files_->setText(!is_folder ? folder_->toolTip() : files.empty() ? no_file : Described(files));
  open_->setEnabled(!files.empty());
}

}  // namespace tarnwick
