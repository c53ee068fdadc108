// One graph as a document: the graph itself, the files it came from, its changed flag, loading and saving. Knows no
// widget; asks through Prompt, works long through LongWork.
#pragma once

#include <QObject>
#include <QSizeF>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/prompt.h"
#include "desk/document/document_io.h"
#include "desk/document/edit_history.h"
#include "desk/document/zoom_stack.h"
#include "desk/work/long_work.h"
#include "graph/xy_graph.h"

namespace tarnwick {

/// The files a document begins with; empty paths for none.
struct DocumentFiles {
  std::filesystem::path graph_or_template;
  std::filesystem::path
      default_template;  ///< used when nothing else is given; a damaged one is told and left out
  std::filesystem::path data;
  std::filesystem::path data_set;
};

class Document final : public QObject {
  Q_OBJECT

 public:
  /// An empty graph called `name` ("Graph_1"). `work` and `prompt` outlive the document.
  Document(std::string name, LongWork& work, Prompt& prompt, QObject* parent = nullptr);

  const std::string& Name() const { return name_; }

  // An inserted graph may be selected. It is then what commands, mouse and loading work on, until another is selected or
  // it is gone; files, pictures and steps are always of the whole.
  /// The graph worked on: the selected inserted graph, else the whole.
  TxyGraph& Graph();
  const TxyGraph& Graph() const;
  TxyGraph& WholeGraph() { return graph_; }
  const TxyGraph& WholeGraph() const { return graph_; }
  std::optional<std::size_t> SelectedChild() const;
  /// Nothing: the whole graph. Ignored when there is no such inserted graph.
  void SelectChild(std::optional<std::size_t> child);

  /// What works long on the document's behalf.
  LongWork& Work() { return work_; }
  /// The way back through the scales of the graph worked on.
  ZoomStack& Zoom() { return ZoomOf(SelectedChild()); }
  const ZoomStack& Zoom() const;
  /// That of an inserted graph, or of the whole.
  ZoomStack& ZoomOf(std::optional<std::size_t> child);
  /// The name, and after loading or saving a graph file or template its path.
  const std::string& Caption() const { return caption_; }
  /// What the last loading has to say (rows skipped, sampling); empty for nothing.
  const std::string& Note() const { return note_; }

  const std::filesystem::path& GraphFileName() const { return graph_file_; }
  const std::filesystem::path& TemplateName() const { return template_; }
  const std::filesystem::path& DataFileName() const { return data_file_; }
  /// Where file dialogs start.
  const std::filesystem::path& DataFolder() const { return data_folder_; }
  void SetDataFolder(std::filesystem::path folder) { data_folder_ = std::move(folder); }

  // Editing. What changes the graph for good is a step: the state before and after, to be undone and redone without limit.
  // Zooming is no step, and neither is choosing a current DataSet or mark.
  /// Makes one step of what `change` does to the graph worked on, which it must not delete; `name` as it is read after
  /// "Undo": "Move Point". Listeners are told once. When `change` throws, the graph is as before and the exception goes on. False when nothing changed.
  bool Edit(const std::string& name, const std::function<void(TxyGraph&)>& change,
            Merging merging = Merging::No);
  bool CanUndo() const { return history_.CanUndo(); }
  bool CanRedo() const { return history_.CanRedo(); }
  void Undo();
  void Redo();
  /// "&Undo Move Point", or "&Undo" when there is no step. Valid until the next step.
  std::string_view UndoCaption() const { return undo_caption_; }
  std::string_view RedoCaption() const { return redo_caption_; }
  EditHistory& History() { return history_; }

  /// Follows the steps: undone back to the state that was saved, a document is unchanged.
  bool Changed() const { return history_.Changed(); }
  void SetChanged(bool changed) { history_.SetChanged(changed); }
  /// False once reading the data file failed: such a document has nothing worth saving.
  bool LoadedSuccessfully() const { return loaded_successfully_; }

  // Loading. All throw FileError and then leave the graph as it was; false when nothing was read (cancelled, or a kind of
  // file that cannot be loaded). A graph file or template begins a new history, data are a step of the present one.
  /// What creating a graph window does: the graph or template, then the data.
  bool Begin(const DocumentFiles& files);
  /// The graph file again, else the template, else the default appearance; the changed flag is cleared.
  void Reload();
  /// A path that does not exist gives the default appearance.
  void LoadGraphFile(const std::filesystem::path& path);
  bool ReadDataFile(const std::filesystem::path& path);
  /// One step called `step` of what `reading` makes of the graph worked on and data from elsewhere. It runs as all reading
  /// does, maybe on another thread.
  bool AddData(const std::string& step,
               const std::function<ReadResult(const GraphState&, Progress&)>& reading);
  /// By extension: graph, template, DataSet file; anything else is tried as data.
  bool LoadDataFromFile(const std::filesystem::path& path);
  /// Reads the outside sources of all DataSets again.
  bool Refresh();

  // Saving. All throw FileError; the old file then stays.
  void SaveGraphFile(const std::filesystem::path& path);
  void SaveDataFile(const std::filesystem::path& path);
  void SaveDataSetFile(const std::filesystem::path& path);

  /// Arranges a graph that came from data alone for a picture of this size; does nothing when it was arranged for that
  /// size already, nor once a file or an edit has decided the look.
  void FinishLook(QSizeF size);

 signals:
  void graphChanged(tarnwick::GraphChange change);
  void captionChanged();
  /// Files, changed flag or note are other ones.
  void stateChanged();

 private:
  void LoadDefaultTemplate(const std::filesystem::path& path);
  ReadResult Read(const std::function<ReadResult(Progress&)>& reading);
  void Write(const std::function<void()>& writing);
  void TakeState(const ReadResult& result);
  void TakeNewData(const std::string& step, const GraphState& before, const ReadResult& result);
  void TakeStep(const std::string& name, const ReadResult& result, Merging merging = Merging::No);
  void Forget(bool changed);
  void HistoryMoved();
  void LoadGraphIntoChild(const std::filesystem::path& path);
  void ArrangeChild();
  ReadResult ReadAgain(const TxyGraph& graph, const std::vector<std::size_t>& which);
  void TellChange(GraphChange change);
  void SettleTooManyPoints();
  void TellMissingPictures(const TxyGraph& graph);
  void ShowPath(const std::filesystem::path& path);

  std::string name_;
  std::string caption_;
  std::string note_;
  LongWork& work_;
  Prompt& prompt_;
  TxyGraph graph_;
  std::vector<ZoomStack> zooms_ =
      std::vector<ZoomStack>(1);  // of the whole and each inserted graph
  std::optional<std::size_t> selected_child_;
  std::filesystem::path graph_file_;
  std::filesystem::path template_;
  std::filesystem::path data_file_;
  std::filesystem::path data_folder_;
  bool loaded_successfully_ = true;
  Look look_;
  EditHistory history_{graph_, look_};
  std::string undo_caption_;
  std::string redo_caption_;
  std::set<std::string> told_;  // of background pictures that cannot be read
};

}  // namespace tarnwick
