// The steps of a document's editing: states before and after, sharing all points that no step changed. Knows the graph and
// how its look came about; knows no file, no zooming and no window.
#pragma once

#include <QObject>
#include <QSizeF>
#include <QUndoStack>
#include <cstdint>
#include <memory>
#include <string>

#include "desk/document/document_told.h"
#include "graph/graph_state.h"

namespace tarnwick {

class TxyGraph;

/// What an automatic legend was placed for.
struct LegendOccasion {
  QSizeF size;
  std::size_t data_sets = 0;
  bool second_axis = false;
  bool operator==(const LegendOccasion&) const = default;
};

/// How the look of a document's graph came about.
struct LookOrigin {
  bool own = false;     ///< decided by a file or the user
  QSizeF arranged_for;  ///< the size it was arranged for otherwise; empty when data came in since
  LegendOccasion settled_for = {};  ///< what an automatic legend was placed for last
  bool legend_hides = false;        ///< there it lay over something all the same
};

/// What an edit keeps of a document.
struct EditState {
  GraphState graph;
  LookOrigin look;
  bool results_outdated = false;  ///< what was computed from the data is of those before
  ImportTold told = {};           ///< what the user was told of the reading of its data
};

/// Whether a step of the same name straight after is taken for one with it.
enum class Merging { No, WithLikeStep };

class EditHistory final : public QObject {
  Q_OBJECT

 public:
  /// All outlive the history.
  EditHistory(TxyGraph& graph, LookOrigin& look, DocumentTold& told, QObject* parent = nullptr);

  /// The present state; the one kept last when nothing changed since.
  std::shared_ptr<const EditState> Present() const;
  /// While steps are open nothing can be undone, and what is closed inside another belongs to that.
  void Open() { ++open_; }
  bool IsOpen() const { return open_ > 0; }
  /// Remembers a step from `before` to the present state; when it changed the look, that is the user's own from now on.
  /// False when both are the same or another step is open.
  bool Close(const std::string& name, Merging merging,
             const std::shared_ptr<const EditState>& before);
  /// Ends an open step by going back to the state before it.
  void TakeBack(const EditState& before);

  bool CanUndo() const { return open_ == 0 && stack_.canUndo(); }
  bool CanRedo() const { return open_ == 0 && stack_.canRedo(); }
  /// Nothing happens when there is no such step. The scales that the user has zoomed to stay, unless the step changed
  /// scales itself, and so do points that came by themselves since.
  void Undo();
  void Redo();
  /// Back to before the first step.
  void UndoAll();
  /// Of the step that would be undone or redone, "Move Point"; empty for none.
  std::string UndoName() const { return stack_.undoText().toStdString(); }
  std::string RedoName() const { return stack_.redoText().toStdString(); }

  /// The step that would be undone, by a number of its own; 0 for none. Steps taken for one keep it.
  std::int64_t LastStep() const;
  /// The next step is one of its own, even a like one.
  void EndStep() { ++run_; }
  /// Undoes the last step for good: it cannot be redone.
  void DropLast();

  /// Goes back and forth with the steps; a change belongs to the step that is open.
  bool ResultsOutdated() const { return results_outdated_; }
  void SetResultsOutdated(bool outdated) { results_outdated_ = outdated; }

  /// Forgets every step.
  void Clear();
  /// Whether the present state is another than the one that was called unchanged last: undone back to what was saved, a
  /// document is unchanged.
  bool Changed() const { return !stack_.isClean(); }
  void SetChanged(bool changed);

 signals:
  /// A step is about to be undone or made again.
  void aboutToMove();
  /// Steps or changed flag are other ones.
  void moved();

 private:
  friend class EditStep;
  void Restore(const EditState& state);
  /// From one side of a step to the other. Both learn what came by itself while they were the present.
  void Cross(std::shared_ptr<const EditState>& left, std::shared_ptr<const EditState>& target);

  TxyGraph& graph_;
  LookOrigin& look_;
  DocumentTold& told_;
  QUndoStack stack_;
  std::shared_ptr<const EditState> last_;
  bool results_outdated_ = false;
  int open_ = 0;
  int run_ = 0;            // like steps are one within a run of them
  std::int64_t made_ = 0;  // steps so far
  bool dropping_ = false;
};

}  // namespace tarnwick
