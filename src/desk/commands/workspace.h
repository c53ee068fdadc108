// What commands may ask of the program around the active document: its windows and files. Knows documents, no widgets; the
// main window stands behind it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tarnwick {

class Document;
struct ImportOptions;

enum class WindowArrangement {
  Cascade,
  TileHorizontally,
  TileVertically,
  Grid,  ///< tiles of nearly the workspace's shape
  MinimizeAll,
  ArrangeIcons
};

enum class ButtonCaptions { Hidden, Shown };

/// How graphs stand in the main window: in frames of their own, or one at a time behind tabs.
enum class WindowFrames { Frames, Tabs };

/// What came of opening a file: its document, or why there is none; neither when it was cancelled.
struct Opening {
  Document* document = nullptr;
  std::string trouble = {};
};

class Workspace {
 public:
  virtual ~Workspace() = default;

  /// A graph window from the default template.
  virtual void NewGraph() = 0;
  /// A graph window for `path`; a kind of file that a feature takes goes to the active window instead. A file that cannot
  /// be read is told to the user and opens nothing; false then.
  virtual bool OpenFile(const std::filesystem::path& path) = 0;
  /// The same for several, all seen in the end; those that cannot be read are told together.
  virtual bool OpenFiles(const std::vector<std::filesystem::path>& paths) = 0;
  /// The same for any kind of file that opens a window, untold; `reading` says how data are read.
  virtual Opening TryToOpen(const std::filesystem::path& path, const ImportOptions& reading) = 0;
  /// Several windows that `opening` opens are all seen in the end, none hidden behind another.
  virtual void SeeTogether(const std::function<void()>& opening) = 0;
  /// Loads `path` into an open document and tells what is wrong with it. False when nothing was loaded.
  virtual bool LoadInto(Document& document, const std::filesystem::path& path) = 0;
  /// Saves under the document's graph file name, else asks for one. False when nothing was saved.
  virtual bool Save(Document& document) = 0;
  /// Asks for a name and saves by its extension. False when nothing was saved.
  virtual bool SaveAs(Document& document) = 0;
  /// The documents of all graph windows, in the order of their opening.
  virtual std::vector<Document*> Documents() const = 0;
  /// Closes the document's window, which asks what it has to; false when it stays.
  virtual bool Close(Document& document) = 0;
  virtual void Arrange(WindowArrangement arrangement) = 0;
  virtual void SetFrames(WindowFrames frames) = 0;
  virtual WindowFrames GetFrames() const = 0;
  virtual void ExitProgram() = 0;
  /// Opens what the program had open when it was closed last and has not now; what is not there any more is told.
  virtual void ReopenSession() = 0;
  /// How many windows that would open.
  virtual int WindowsToReopen() const = 0;
  /// Whether the buttons of the tool bar show their captions.
  virtual void SetButtonCaptions(ButtonCaptions captions) = 0;
  virtual ButtonCaptions GetButtonCaptions() const = 0;

 protected:
  Workspace() = default;
  Workspace(const Workspace&) = default;
  Workspace& operator=(const Workspace&) = default;
};

}  // namespace tarnwick
