// Asking the user for file names, as an interface: dialogs on the desktop, a script in tests.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

class QWidget;

namespace tarnwick {

/// What the Save dialog starts with. The filter chosen there decides which of the two names is proposed.
struct SaveProposal {
  std::filesystem::path folder;
  std::filesystem::path graph_name;  ///< without extension
  std::filesystem::path
      data_set_name;  ///< for the DataSet file filter; empty without a current DataSet
};

class FileChooser {
 public:
  virtual ~FileChooser() = default;
  /// The files chosen, none when the user cancels. An empty folder means the current one.
  virtual std::vector<std::filesystem::path> FilesToOpen(const std::filesystem::path& folder) = 0;
  /// The name chosen, with an extension; nothing when the user cancels. It does not ask about existing files.
  virtual std::optional<std::filesystem::path> FileToSave(const SaveProposal& proposal) = 0;

 protected:
  FileChooser() = default;
  FileChooser(const FileChooser&) = default;
  FileChooser& operator=(const FileChooser&) = default;
};

/// The desktop's file dialogs, before `parent`.
class DialogFileChooser final : public FileChooser {
 public:
  explicit DialogFileChooser(QWidget* parent) : parent_(parent) {}
  std::vector<std::filesystem::path> FilesToOpen(const std::filesystem::path& folder) override;
  std::optional<std::filesystem::path> FileToSave(const SaveProposal& proposal) override;

 private:
  QWidget* parent_;
};

}  // namespace tarnwick
