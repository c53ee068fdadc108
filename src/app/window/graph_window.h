// A graph window: the document's frame in the main window, which asks before changes are lost and takes dropped files.
// Decides nothing about files itself; the workspace does.
#pragma once

#include <QMdiSubWindow>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "desk/document/document.h"
#include "desk/feature/feature.h"

namespace tarnwick {

class GraphCanvas;
class Workspace;

class TGraphWindow final : public QMdiSubWindow {
  Q_OBJECT

 public:
  /// `bars` stand over the graph, below its own. `workspace` and `prompt` outlive the window.
  TGraphWindow(std::unique_ptr<Document> document, const std::vector<BarMaker>& bars,
               Workspace& workspace, Prompt& prompt, QWidget* parent = nullptr);
  ~TGraphWindow() override;

  Document& GetDocument() const { return *document_; }
  GraphCanvas& Canvas() const { return *canvas_; }

 signals:
  void closing(tarnwick::TGraphWindow* window);
  /// The user took back closing this window, and with it closing the program.
  void closingRefused();
  /// The user wants to see and change how the data are read.
  void sourceWanted();
  /// The user wants another table of that file in a window of its own, read with so many header lines.
  void tableWanted(const std::filesystem::path& file, int headers);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  bool MayClose();

  std::unique_ptr<Document> document_;
  Workspace& workspace_;
  Prompt& prompt_;
  GraphCanvas* canvas_;
};

}  // namespace tarnwick
