// What commands may ask of the program around the active document: windows, files, leaving. Knows documents, no widgets;
// the main window stands behind it.
#pragma once

#include <filesystem>
#include <vector>

#include "app/canvas/mouse_mode.h"

namespace tarnwick {

class Document;

/// What of a fitting model is edited first.
enum class FitPage { Function, Settings };

enum class WindowArrangement {
  Cascade,
  TileHorizontally,
  TileVertically,
  MinimizeAll,
  ArrangeIcons
};

class Workspace {
 public:
  virtual ~Workspace() = default;

  /// A graph window from the default template.
  virtual void NewGraph() = 0;
  /// A graph window for `path`; a fitting function goes to the active window instead. A file that cannot be read is told
  /// to the user and opens nothing; false then.
  virtual bool OpenFile(const std::filesystem::path& path) = 0;
  /// Loads `path` into an open document, a fitting function into its current DataSet, and tells what is wrong with it.
  /// False when nothing was loaded.
  virtual bool LoadInto(Document& document, const std::filesystem::path& path) = 0;
  /// Saves under the document's graph file name, else asks for one. False when nothing was saved.
  virtual bool Save(Document& document) = 0;
  /// Asks for a name and saves by its extension. False when nothing was saved.
  virtual bool SaveAs(Document& document) = 0;
  /// Lets the user place the whole graph on paper and print it.
  virtual void Print(Document& document) = 0;
  /// Lets the user choose the paper to print on.
  virtual void SetUpPrinter() = 0;
  /// The documents of all graph windows, in the order of their opening.
  virtual std::vector<Document*> Documents() const = 0;

  /// Closes the document's window, which asks what it has to; false when it stays.
  virtual bool Close(Document& document) = 0;
  /// Shows the panel that says what the fit of the current DataSet found, or hides it.
  virtual void ShowFitResult(bool shown) = 0;
  virtual bool FitResultIsShown() const = 0;
  /// Lets the user edit the model of the document's current DataSet, which it must have.
  virtual void EditFitModel(Document& document, FitPage page) = 0;
  /// Gives the mouse another meaning on the document's graph; a mode that is on already ends instead.
  virtual void SwitchMode(Document& document, MouseMode mode) = 0;
  virtual MouseMode ModeOf(const Document& document) const = 0;
  /// Shows the mark editor for the graph that the document is working on. What was edited last becomes the current mark.
  virtual void EditMarks(Document& document) = 0;
  virtual void Arrange(WindowArrangement arrangement) = 0;
  virtual void ExitProgram() = 0;
  virtual void ShowAbout() = 0;

 protected:
  Workspace() = default;
  Workspace(const Workspace&) = default;
  Workspace& operator=(const Workspace&) = default;
};

}  // namespace tarnwick
