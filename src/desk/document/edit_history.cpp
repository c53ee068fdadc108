#include "desk/document/edit_history.h"

#include <QUndoCommand>
#include <utility>

#include "desk/document/points_come_since.h"
#include "graph/graph_state_compare.h"
#include "graph/graph_update.h"
#include "graph/xy_graph.h"

namespace tarnwick {

using StatePointer = std::shared_ptr<const EditState>;

namespace {

void TakeWhatCame(StatePointer& side, const GraphState& present) {
  EditState state = *side;
  if (TakePointsThatCame(state.graph, present))
    side = std::make_shared<const EditState>(std::move(state));
}

}  // namespace

class EditStep final : public QUndoCommand {
 public:
  EditStep(EditHistory& history, const std::string& name, Merging merging, StatePointer before,
           StatePointer after)
      : QUndoCommand(QString::fromStdString(name)),
        history_(history),
        merging_(merging),
        run_(history.run_),
        number_(++history.made_),
        before_(std::move(before)),
        after_(std::move(after)) {}

  std::int64_t Number() const { return number_; }

  void undo() override {
    history_.Cross(after_, before_);
    setObsolete(history_.dropping_);
  }
  void redo() override {
    // The stack begins with doing what is done already.
    if (std::exchange(done_, true)) history_.Cross(before_, after_);
  }

  int id() const override {
    constexpr int kMergeable = 1;
    return merging_ == Merging::WithLikeStep ? kMergeable : -1;
  }
  bool mergeWith(const QUndoCommand* next) override {
    const auto* step = static_cast<const EditStep*>(next);
    if (step->text() != text() || step->run_ != run_) return false;
    after_ = step->after_;
    setObsolete(SameState(before_->graph, after_->graph));
    return true;
  }

 private:
  EditHistory& history_;
  Merging merging_;
  int run_;
  std::int64_t number_;
  StatePointer before_;
  StatePointer after_;
  bool done_ = false;
};

EditHistory::EditHistory(TxyGraph& graph, LookOrigin& look, DocumentTold& told, QObject* parent)
    : QObject(parent), graph_(graph), look_(look), told_(told) {}

StatePointer EditHistory::Present() const {
  EditState present{graph_.State(), look_, results_outdated_, told_.All()};
  const bool same = last_ && SameState(last_->graph, present.graph) &&
                    last_->look.own == look_.own && last_->results_outdated == results_outdated_ &&
                    last_->look.arranged_for == look_.arranged_for && last_->told == present.told &&
                    last_->graph.marks.CurrentId() == present.graph.marks.CurrentId();
  return same ? last_ : std::make_shared<const EditState>(std::move(present));
}

void EditHistory::Restore(const EditState& state) {
  graph_.SetState(state.graph);
  look_ = state.look;
  results_outdated_ = state.results_outdated;
  told_.GoBackTo(state.told);
}

void EditHistory::Cross(StatePointer& left, StatePointer& target) {
  EditState state = *target;
  const GraphState present = graph_.State();
  KeepView(state.graph, present, {left->graph, target->graph});
  KeepPointsComeSince(state.graph, present, left->graph);
  Restore(state);
  TakeWhatCame(left, present);
  TakeWhatCame(target, graph_.State());
}

bool EditHistory::Close(const std::string& name, Merging merging, const StatePointer& before) {
  if (--open_ > 0) return false;
  if (!SameLook(before->graph, graph_.State())) look_.own = true;
  StatePointer after = Present();
  last_ = after;
  if (SameState(before->graph, after->graph)) return false;
  stack_.push(new EditStep(*this, name, merging, before, std::move(after)));
  emit moved();
  return true;
}

void EditHistory::TakeBack(const EditState& before) {
  --open_;
  Restore(before);
}

void EditHistory::Undo() {
  if (!CanUndo()) return;
  emit aboutToMove();
  stack_.undo();
  emit moved();
}

void EditHistory::UndoAll() {
  if (!CanUndo()) return;
  emit aboutToMove();
  {
    const GraphUpdate all(graph_);
    stack_.setIndex(0);
  }
  emit moved();
}

void EditHistory::Redo() {
  if (!CanRedo()) return;
  emit aboutToMove();
  stack_.redo();
  emit moved();
}

std::int64_t EditHistory::LastStep() const {
  if (!CanUndo()) return 0;
  return static_cast<const EditStep*>(stack_.command(stack_.index() - 1))->Number();
}

void EditHistory::DropLast() {
  dropping_ = true;
  Undo();
  dropping_ = false;
}

void EditHistory::Clear() {
  stack_.clear();
  last_.reset();
  results_outdated_ = false;
  emit moved();
}

void EditHistory::SetChanged(bool changed) {
  if (changed) {
    stack_.resetClean();
  } else {
    stack_.setClean();
  }
  emit moved();
}

}  // namespace tarnwick
