// The graph editor: pages of everything that a graph keeps, beside the graph. Every change shows at once and is part of one step
// for each page; it follows what is clicked in the graph. What a value may be stands in judge.h, which fields in pages.h.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "desk/commands/command.h"
#include "desk/document/document.h"
#include "desk/document/live_edit.h"
#include "desk/panels/panel.h"
#include "editors/graph/pages.h"

class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace tarnwick {

class CopyLookButton;
class FieldForm;
class ItemList;
class PageTree;
struct ListedItem;

class GraphEditor final : public QWidget {
  Q_OBJECT

 public:
  /// `parts` outlive the editor.
  explicit GraphEditor(const PanelParts& parts, QWidget* parent = nullptr);
  ~GraphEditor() override;

  void Follow(Document* document);

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QWidget* MakeButtons();
  /// Does what a control asks for; what goes wrong is told the user.
  void Do(const std::function<void(CommandContext&)>& work);
  TxyGraph& Graph() const { return document_->Graph(); }

  const Page& ShownPage() const { return Pages()[page_]; }
  void ShowPage(std::size_t page);
  void BuildPage();
  ItemList* MakeItems();
  void GoTo(const GraphPart& part);
  void FollowClick();
  /// What the fields of the page are of: the chosen DataSets or marks, the axis, or the one that there is.
  std::vector<std::int32_t> Targets() const;
  void Refresh();
  void RefreshItems();
  void RefreshField(std::size_t place, const std::vector<std::int32_t>& ids);
  FieldSurroundings Around(const PageField& field, std::int32_t id) const;

  void TakeField(std::size_t place);
  /// Gives the graph `before` the value; leaves it so, and answers false, when the value is refused.
  bool TryField(std::size_t place, const GraphState& before);
  bool TryRefused(std::size_t but);
  FieldRemark JudgeTyped(const PageField& field, const std::vector<std::int32_t>& ids,
                         const FieldValue& value) const;
  void Reorder(const std::vector<std::int32_t>& ids);
  void CopyLook(const std::vector<std::int32_t>& to);
  std::vector<ListedItem> OtherDataSets() const;
  void UseForNewGraphs();

  void EndStep();
  void Keep();
  void TakeBack();
  void CloseDock();

  PanelParts parts_;
  QPointer<Document> document_;
  const TxyGraph* graph_ = nullptr;  // the one shown last: a document has inserted ones, too
  std::unique_ptr<LiveEdit> live_;
  /// A field that is being typed in. The beginning of a number is no number that was meant: each text that is typed
  /// begins from what the graph was before.
  struct Typing {
    std::size_t place = 0;
    GraphState before;
  };
  std::optional<Typing> typing_;
  bool changing_ = false;
  std::size_t page_ = 0;
  int clicks_ = 0;
  bool refreshing_ = false;

  PageTree* tree_ = nullptr;
  QScrollArea* scroll_ = nullptr;
  QWidget* right_ = nullptr;
  QVBoxLayout* column_ = nullptr;
  ItemList* items_ = nullptr;            // of the page; null where there are none
  CopyLookButton* copy_look_ = nullptr;  // likewise
  FieldForm* form_ = nullptr;
  std::vector<PageField> fields_;  // of the form
  QPushButton* keep_ = nullptr;
  QPushButton* cancel_ = nullptr;
};

}  // namespace tarnwick
