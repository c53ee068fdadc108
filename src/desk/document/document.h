// One graph as a document: the graph, which part of it is worked on, and its parts: the steps of its editing, the way back
// through its scales, the origin of its look, its files. Knows no widget.
#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/prompt.h"
#include "desk/document/document_files.h"
#include "desk/document/edit_history.h"
#include "desk/document/live_data.h"
#include "desk/document/zoom_stack.h"
#include "desk/work/long_work.h"
#include "graph/graph_part.h"
#include "graph/picking.h"
#include "graph/xy_graph.h"
#include "results/regression_failures.h"

namespace tarnwick {

class Document final : public QObject {
  Q_OBJECT

 public:
  /// An empty graph called `name` ("Graph_1"). `work` and `prompt` outlive the document.
  Document(std::string name, LongWork& work, Prompt& prompt, QObject* parent = nullptr);

  const std::string& Name() const { return name_; }
  /// What its DataSets are called together: "Graph_1 DATA".
  std::string DataName() const { return name_ + " DATA"; }

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

  /// What of the picture was clicked last. Whoever shows the picture says when.
  struct Click {
    GraphPart part;
    int count = 0;
  };
  const Click& LastClick() const { return click_; }
  void TakeClick(const GraphPart& part) { click_ = {part, click_.count + 1}; }

  /// The point of the current DataSet that is picked, in the picture or in a table; nothing for none. Told by pointPicked.
  const std::optional<PickedPoint>& Picked() const { return picked_; }
  void Pick(const std::optional<PickedPoint>& point);

  // What changes the graph for good is a step: the state before and after, to be undone and redone without limit. Zooming
  // is no step, and neither is choosing a current DataSet or mark.
  /// Makes one step of what `change` does to the graph worked on, which it must not delete; `name` as it is read after
  /// "Undo": "Move Point". Listeners are told once. When `change` throws, the graph is as before and the exception goes on.
  /// False when nothing changed.
  bool Edit(const std::string& name, const std::function<void(TxyGraph&)>& change,
            Merging merging = Merging::No);
  /// What data that come by themselves do to the whole graph: no step, and undoing steps leaves it there. The document is changed
  /// by it, and its look is finished anew when it has become one of many points. Not while a step is open or work runs.
  void TakeComing(const std::function<void(TxyGraph&)>& change);
  EditHistory& History() { return history_; }
  const EditHistory& History() const { return history_; }

  /// The way back through the scales of the graph worked on.
  ZoomStack& Zoom() { return zooms_.Of(SelectedChild()); }
  ZoomStacks& Zooms() { return zooms_; }

  LookOrigin& Look() { return look_; }

  /// What was decided or left out in reading what the graph shows, until it is closed. It goes back and forth with the steps.
  DocumentTold& Told() { return told_; }
  const DocumentTold& Told() const { return told_; }

  /// Where the graph comes from and goes to: names, loading, saving.
  DocumentFiles& Files() { return files_; }
  const DocumentFiles& Files() const { return files_; }

  /// The data that come by themselves.
  LiveData& Live() { return live_; }

  /// What works long, and what asks, on the document's behalf.
  LongWork& Work() { return work_; }
  Prompt& GetPrompt() { return prompt_; }
  /// Regressions that failed before are told anew: the graph is another one.
  void ForgetFailedRegressions() { failed_regressions_.clear(); }

 signals:
  void graphChanged(tarnwick::GraphChange change);
  void captionChanged();
  void pointPicked();
  /// The user wants to see how the data are read.
  void sourceWanted();
  /// A fit that runs has come to these values of all parameters of a DataSet of the whole graph, whose model keeps its own
  /// until the end. At most ten times a second.
  void fitStepped(tarnwick::Document* document, std::size_t series,
                  const std::vector<double>& values);
  /// Files, changed flag or note are other ones.
  void stateChanged();

 private:
  void HistoryMoved();
  void TellChange(GraphChange change);
  void TellFailedRegressions();

  std::string name_;
  LongWork& work_;
  Prompt& prompt_;
  TxyGraph graph_;
  std::optional<std::size_t> selected_child_;
  Click click_;
  std::optional<PickedPoint> picked_;
  ZoomStacks zooms_;
  LookOrigin look_;
  DocumentTold told_;
  EditHistory history_{graph_, look_, told_};
  DocumentFiles files_{*this};
  LiveData live_{*this};
  std::vector<RegressionFailure> failed_regressions_;  // that the user has been told of
};

}  // namespace tarnwick
