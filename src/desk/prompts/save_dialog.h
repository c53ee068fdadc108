// The Save As dialog: every kind of file that can be written, and beneath the name what its ending means. Knows the kinds
// as rows; writes nothing.
#pragma once

#include <QFileDialog>
#include <filesystem>
#include <optional>
#include <string>

#include "desk/prompts/file_chooser.h"

class QLabel;

namespace tarnwick {

/// What saving under this name would keep, in a line: "Picture, 640 x 480 pixels: not the whole graph".
std::string SavingKeeps(const std::filesystem::path& name, const SaveProposal& proposal);

class SaveDialog final : public QFileDialog {
  Q_OBJECT

 public:
  SaveDialog(SaveProposal proposal, QWidget* parent);

  /// The name at hand, with the filter's ending where it has none; nothing while there is no name.
  std::optional<std::filesystem::path> Chosen() const;

 private:
  void BuildMeaning();
  void TakeFilter(const QString& chosen);
  void ShowMeaning();

  SaveProposal proposal_;
  QLabel* meaning_ = nullptr;
};

}  // namespace tarnwick
