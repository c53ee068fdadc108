// Asking the user for file names, as an interface: dialogs on the desktop, a script in tests.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "graph/pictures/picture_export.h"

class QWidget;

namespace tarnwick {

/// What the Save dialog starts with. The filter chosen there decides which of the two names is proposed.
struct SaveProposal {
  std::filesystem::path folder;
  std::filesystem::path graph_name;  ///< without extension
  std::filesystem::path
      data_set_name;       ///< for the DataSet file filter; empty without a current DataSet
  PictureOptions picture;  ///< as the graph is shown
};

/// The files of a folder that a mask names.
struct FolderChoice {
  std::filesystem::path folder;
  std::string mask;  ///< "*.*" for all, "*.dat;*.txt"
};

class FileChooser {
 public:
  virtual ~FileChooser() = default;
  /// The files chosen, none when the user cancels. An empty folder means the current one.
  virtual std::vector<std::filesystem::path> FilesToOpen(const std::filesystem::path& folder) = 0;
  /// The folder chosen, beginning with this one; nothing when the user cancels, or where nobody can be asked.
  virtual std::optional<FolderChoice> FolderToOpen(const std::filesystem::path&) {
    return std::nullopt;
  }
  /// The name chosen, with an extension; nothing when the user cancels. It does not ask about existing files.
  virtual std::optional<std::filesystem::path> FileToSave(const SaveProposal& proposal) = 0;
  /// The PDF file chosen, which may exist; nothing when the user cancels.
  virtual std::optional<std::filesystem::path> FileToPrint(const SaveProposal& proposal) = 0;

  /// The fitting function chosen, of whatever ending; nothing when the user cancels, or where nobody can be asked.
  virtual std::optional<std::filesystem::path> FunctionToLoad(const std::filesystem::path&) {
    return std::nullopt;
  }
  /// The name chosen for a fitting function, beginning with `proposal`; likewise. It does not ask about existing files.
  virtual std::optional<std::filesystem::path> FunctionToSave(const std::filesystem::path&) {
    return std::nullopt;
  }

  /// The name chosen for a table of text, with an ending, beginning with `proposal`; likewise.
  virtual std::optional<std::filesystem::path> TableToSave(const std::filesystem::path&) {
    return std::nullopt;
  }

  /// How large a picture is to be; nothing when the user cancels. Where nobody can be asked, as proposed.
  virtual std::optional<PictureOptions> SizeOfPicture(const PictureOptions& proposal) {
    return proposal;
  }

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
  std::optional<FolderChoice> FolderToOpen(const std::filesystem::path& folder) override;
  std::optional<std::filesystem::path> FileToSave(const SaveProposal& proposal) override;
  std::optional<PictureOptions> SizeOfPicture(const PictureOptions& proposal) override;
  std::optional<std::filesystem::path> FileToPrint(const SaveProposal& proposal) override;
  std::optional<std::filesystem::path> FunctionToLoad(const std::filesystem::path& folder) override;
  std::optional<std::filesystem::path> FunctionToSave(
      const std::filesystem::path& proposal) override;
  std::optional<std::filesystem::path> TableToSave(const std::filesystem::path& proposal) override;

 private:
  QWidget* parent_;
};

}  // namespace tarnwick
