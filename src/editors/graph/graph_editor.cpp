#include "editors/graph/graph_editor.h"

#include <QDockWidget>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>
#include <utility>

#include "base/prompt.h"
#include "desk/commands/command_actions.h"
#include "desk/document/document_io.h"
#include "desk/fields/field_form.h"
#include "desk/fields/field_widget.h"
#include "desk/settings/program_paths.h"
#include "desk/settings/settings.h"
#include "desk/widgets/reading_order.h"
#include "desk/widgets/text.h"
#include "editors/graph/copy_look_button.h"
#include "editors/graph/item_list.h"
#include "editors/graph/judge.h"
#include "editors/graph/page_tree.h"
#include "editors/graph/parts_of_graph.h"
#include "graph/edit/series_edit.h"

namespace tarnwick {
namespace {

constexpr Setting<int> kPage = {"GraphEditor", "Page", 0, "Page of the graph editor"};

using Kind = GraphPart::Kind;

constexpr int kFormWidth = 310;

/// While one lives, what is told of the graph comes from the editor.
class Changing {
 public:
  explicit Changing(bool& flag) : flag_(flag) { flag_ = true; }
  ~Changing() { flag_ = false; }
  Changing(const Changing&) = delete;
  Changing& operator=(const Changing&) = delete;

 private:
  bool& flag_;
};

}  // namespace

GraphEditor::GraphEditor(const PanelParts& parts, QWidget* parent)
    : QWidget(parent), parts_(parts) {
  setObjectName("GraphEditorPages");
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(6, 6, 6, 6);
  auto* line = new QHBoxLayout;
  tree_ = new PageTree(this);
  connect(tree_, &PageTree::chosen, this, &GraphEditor::ShowPage);
  line->addWidget(tree_);
  right_ = new QWidget(this);
  column_ = new QVBoxLayout(right_);
  column_->setContentsMargins(0, 0, 0, 0);
  scroll_ = new QScrollArea(right_);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);  // it follows the control that has it
  scroll_->setWidgetResizable(true);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->setMinimumWidth(kFormWidth);
  column_->addWidget(scroll_, 1);
  line->addWidget(right_, 1);
  rows->addLayout(line, 1);
  rows->addWidget(MakeButtons());
  const int page = std::clamp(parts.settings.Read(kPage), 0, static_cast<int>(Pages().size()) - 1);
  ShowPage(static_cast<std::size_t>(page));
}

GraphEditor::~GraphEditor() = default;

QWidget* GraphEditor::MakeButtons() {
  auto* bar = new QWidget(this);
  auto* line = new QHBoxLayout(bar);
  line->setContentsMargins(0, 0, 0, 0);
  auto* standard = new QPushButton(tr("Use for New Graphs"), bar);
  standard->setObjectName("UseForNewGraphs");
  standard->setToolTip(
      tr("Every new graph begins with this look: colors, fonts, axes, margins "
         "and legend, without DataSets and marks"));
  keep_ = new QPushButton(tr("OK"), bar);
  keep_->setObjectName("Keep");
  keep_->setToolTip(tr("Keep the changes as one step and close the editor"));
  cancel_ = new QPushButton(tr("Cancel"), bar);
  cancel_->setObjectName("TakeBack");
  cancel_->setToolTip(tr("Take back what was changed on this page and close the editor (Esc)"));
  connect(standard, &QPushButton::clicked, this, &GraphEditor::UseForNewGraphs);
  connect(keep_, &QPushButton::clicked, this, &GraphEditor::Keep);
  connect(cancel_, &QPushButton::clicked, this, &GraphEditor::TakeBack);
  line->addWidget(standard);
  line->addStretch();
  line->addWidget(keep_);
  line->addWidget(cancel_);
  return bar;
}

void GraphEditor::Do(const std::function<void(CommandContext&)>& work) {
  parts_.actions.RunAsCommand([&](CommandContext& context) {
    try {
      work(context);
    } catch (const std::exception& error) {
      context.prompt.Tell(error.what());
    }
  });
}

// ---- pages

void GraphEditor::ShowPage(std::size_t page) {
  EndStep();
  page_ = page;
  parts_.settings.Write(kPage, static_cast<int>(page));
  BuildPage();
  tree_->Choose(page);
  Refresh();
}

void GraphEditor::BuildPage() {
  const std::vector<std::int32_t> chosen = items_ ? items_->Chosen() : std::vector<std::int32_t>();
  delete std::exchange(items_, nullptr);
  delete std::exchange(copy_look_, nullptr);
  if (HasItems(ShownPage())) items_ = MakeItems();
  fields_ = FieldsOf(ShownPage());
  std::vector<FieldRow> rows;
  for (const PageField& field : fields_) rows.push_back(SectionOf(field.section).rows[field.row]);
  form_ = new FieldForm(rows);
  scroll_->setWidget(form_);  // takes the old one's place, and deletes it
  connect(form_, &FieldForm::edited, this, &GraphEditor::TakeField);
  TabInReadingOrder(*this);
  if (!items_ || !document_) return;
  RefreshItems();
  items_->Choose(chosen);
  if (!items_->Chosen().empty()) return;
  items_->Choose({ShownPage().part.kind == Kind::Mark ? Graph().Marks().CurrentId()
                                                      : Graph().CurrentSeriesIndex()});
}

ItemList* GraphEditor::MakeItems() {
  const bool marks = ShownPage().part.kind == Kind::Mark;
  auto* items = new ItemList(marks ? tr("Marks") : tr("DataSets"),
                             marks ? ItemList::Order::Fixed : ItemList::Order::ByDragging, right_);
  column_->insertWidget(0, items);
  connect(items, &ItemList::chosenChanged, this, [this] {
    EndStep();
    Refresh();
  });
  connect(items, &ItemList::reordered, this, &GraphEditor::Reorder);
  if (page_ != PageOf({Kind::DataSet})) return items;
  copy_look_ = new CopyLookButton([this] { return OtherDataSets(); }, right_);
  connect(copy_look_, &CopyLookButton::wanted, this, &GraphEditor::CopyLook);
  column_->insertWidget(1, copy_look_);
  return items;
}

void GraphEditor::GoTo(const GraphPart& part) {
  const bool is_shown =
      ShownPage().part.kind == part.kind && (part.kind != Kind::Axis || ShownPage().part == part);
  if (!is_shown) ShowPage(PageOf(part));
  if (!items_ || items_->Chosen() == std::vector{part.id}) return;
  EndStep();
  RefreshItems();
  items_->Choose({part.id});
  Refresh();
}

void GraphEditor::FollowClick() {
  const Document::Click& click = document_->LastClick();
  if (std::exchange(clicks_, click.count) == click.count) return;
  if (click.part.kind != Kind::Graph && IsThere(Graph(), click.part.kind, click.part.id)) {
    GoTo(click.part);
  }
}

std::vector<std::int32_t> GraphEditor::Targets() const {
  if (items_) return items_->Chosen();
  return {ShownPage().part.kind == Kind::Axis ? ShownPage().part.id : 0};
}

// ---- following the graph

void GraphEditor::Follow(Document* document) {
  if (document_ != document) {
    EndStep();
    document_ = document;
    graph_ = nullptr;
    clicks_ = 0;
  }
  if (!changing_) typing_.reset();
  if (!isVisible()) return;
  if (document_ && graph_ != &Graph()) {
    EndStep();
    graph_ = &Graph();
    BuildPage();
  }
  if (document_) FollowClick();
  Refresh();
}

void GraphEditor::Refresh() {
  if (std::exchange(refreshing_, true)) return;
  const bool usable = document_ && !(items_ && (RefreshItems(), items_->Chosen().empty()));
  form_->setEnabled(usable);
  if (copy_look_) {
    copy_look_->setEnabled(usable && items_->Chosen().size() == 1 && Graph().SeriesCount() > 1);
  }
  if (usable) {
    const std::vector<std::int32_t> ids = Targets();
    for (std::size_t place = 0; place < fields_.size(); ++place) RefreshField(place, ids);
  }
  refreshing_ = false;
}

void GraphEditor::RefreshItems() {
  if (items_) items_->ShowItems(ItemsOf(Graph(), ShownPage().part.kind));
}

void GraphEditor::RefreshField(std::size_t place, const std::vector<std::int32_t>& ids) {
  FieldWidget* widget = form_->Field(place);
  if (!widget) return;
  const PageField& field = fields_[place];
  const std::optional<FieldValue> value = CommonValue(Graph(), field, ids);
  if (changing_ && typing_ && typing_->place == place) {
    widget->ShowBehind(value);
  } else {
    widget->Show(value, Around(field, ids.front()));
  }
  // Useful as soon as one of several has a use for it.
  std::string idle;
  for (const std::int32_t id : ids) {
    idle = IdleReason(Graph(), field, id);
    if (idle.empty()) break;
  }
  widget->SetIdle(ToQt(idle));
}

FieldSurroundings GraphEditor::Around(const PageField& field, std::int32_t id) const {
  FieldSurroundings around;
  const FieldRow& row = SectionOf(field.section).rows[field.row];
  if (row.look.control.kind == ControlKind::DataSet) {
    for (std::size_t i = 0; i < Graph().SeriesCount(); ++i) {
      around.data_sets.push_back(Graph().Series(i).SeriesName());
    }
  }
  if (row.look.control.kind == ControlKind::Moment) {
    around.moments = Graph().Axis(AxisOfValue(Graph(), field, id)).ShowAsTime();
  }
  return around;
}

// ---- changing it

void GraphEditor::TakeField(std::size_t place) {
  if (!document_) return;
  Do([&](CommandContext&) {
    const Changing changing(changing_);
    if (!typing_ || typing_->place != place) typing_ = Typing{place, Graph().State()};
    if (!TryField(place, typing_->before)) return;
    if (TryRefused(place)) typing_.reset();
  });
}

/// What another value stood in the way of may be possible now.
bool GraphEditor::TryRefused(std::size_t but) {
  bool taken = false;
  for (std::size_t place = 0; place < fields_.size(); ++place) {
    const FieldWidget* widget = form_->Field(place);
    const bool waits = place != but && widget && widget->IsRefused() && widget->Typed();
    if (waits && TryField(place, Graph().State())) taken = true;
  }
  return taken;
}

bool GraphEditor::TryField(std::size_t place, const GraphState& before) {
  const PageField& field = fields_[place];
  FieldWidget& widget = *form_->Field(place);
  const std::vector<std::int32_t> ids = Targets();
  const std::optional<FieldValue> value = widget.Typed();
  if (!live_) live_ = std::make_unique<LiveEdit>(*document_, std::string(ShownPage().step));
  const auto change = [&](bool set) {
    live_->Change([&](TxyGraph& graph) {
      graph.SetState(before);
      if (!set) return;
      for (const std::int32_t id : ids) {
        SectionOf(field.section).set(graph, id, field.row, *value);
      }
    });
  };
  const FieldRemark remark = value ? JudgeTyped(field, ids, *value) : FieldRemark();
  const bool usable = value && !remark.Refuses();
  if (usable) widget.ShowRemark({});
  change(usable);
  if (!value) return false;  // the field says why itself
  const std::optional<FieldValue> held = CommonValue(Graph(), field, ids);
  const bool is_held = held && SameValue(*held, *value);
  if (usable && !is_held) change(false);
  widget.ShowRemark(usable && !is_held
                        ? FieldRemark::Refused("The graph does not take this value now.")
                        : remark);
  return usable && is_held;
}

FieldRemark GraphEditor::JudgeTyped(const PageField& field, const std::vector<std::int32_t>& ids,
                                    const FieldValue& value) const {
  FieldRemark said;
  for (const std::int32_t id : ids) {
    FieldRemark remark = Judge(Graph(), field, id, value);
    if (remark.kind > said.kind) said = std::move(remark);
  }
  return said;
}

void GraphEditor::Reorder(const std::vector<std::int32_t>& ids) {
  if (!document_ || ids.size() != Graph().SeriesCount()) return;
  const std::vector<std::int32_t> chosen = items_->Chosen();
  Do([&](CommandContext&) {
    EndStep();
    const std::vector<std::size_t> order(ids.begin(), ids.end());
    document_->Edit("Order DataSets", [&](TxyGraph& graph) { ReorderSeries(graph, order); });
    std::vector<std::int32_t> moved;
    moved.reserve(chosen.size());
    for (const std::int32_t id : chosen) {
      moved.push_back(static_cast<std::int32_t>(std::ranges::find(ids, id) - ids.begin()));
    }
    RefreshItems();
    items_->Choose(moved);
    Refresh();
  });
}

std::vector<ListedItem> GraphEditor::OtherDataSets() const {
  std::vector<ListedItem> items = ItemsOf(Graph(), Kind::DataSet);
  std::erase_if(items, [&](const ListedItem& item) { return item.id == items_->Chosen().front(); });
  return items;
}

void GraphEditor::CopyLook(const std::vector<std::int32_t>& to) {
  const SeriesStyle from =
      Graph().Series(static_cast<std::size_t>(items_->Chosen().front())).Style();
  Do([&](CommandContext&) {
    EndStep();
    document_->Edit("Copy Look", [&](TxyGraph& graph) {
      for (const std::int32_t id : to) {
        TSeries& series = graph.Series(static_cast<std::size_t>(id));
        series.SetStyle(WithLookOf(series.Style(), from));
      }
    });
  });
}

void GraphEditor::UseForNewGraphs() {
  if (!document_) return;
  Do([&](CommandContext& context) {
    const std::filesystem::path& file = context.paths.own_template;
    GraphState look = Graph().State();
    look.series.clear();
    look.marks = {};
    look.children.clear();
    std::filesystem::create_directories(file.parent_path());
    WriteByKind(look, file);
    context.prompt.Tell("New graphs begin with this look from now on. It is kept in " +
                        file.string() + "; without that file they begin as before.");
  });
}

// ---- steps

void GraphEditor::EndStep() {
  live_.reset();
  typing_.reset();
}

void GraphEditor::Keep() {
  EndStep();
  CloseDock();
}

void GraphEditor::TakeBack() {
  Do([&](CommandContext&) {
    if (live_ && document_) live_->TakeBack();
    EndStep();
  });
  BuildPage();
  Refresh();
  CloseDock();
}

void GraphEditor::CloseDock() {
  for (QWidget* widget = parentWidget(); widget; widget = widget->parentWidget()) {
    if (auto* dock = qobject_cast<QDockWidget*>(widget)) return void(dock->close());
  }
}

bool GraphEditor::event(QEvent* event) {
  const bool is_esc =
      event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
  if (!is_esc) return QWidget::event(event);
  TakeBack();
  event->accept();
  return true;
}

void GraphEditor::showEvent(QShowEvent*) {
  // Queued changes are told when it is seen.
  Follow(document_);
}

void GraphEditor::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) EndStep();
}

}  // namespace tarnwick
