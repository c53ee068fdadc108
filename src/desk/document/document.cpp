#include "desk/document/document.h"

#include <numeric>
#include <system_error>
#include <utility>

#include "base/error.h"
#include "base/text_encoding.h"
#include "desk/document/open_edit.h"
#include "desk/widgets/text.h"
#include "graph/axes/plot_metrics.h"
#include "graph/background_image.h"
#include "graph/graph_state_compare.h"
#include "graph/layout/finished_look.h"
#include "graph/layout/second_quantity.h"

namespace tarnwick {
namespace {

constexpr const char* kDefaultTemplateName = "default.ttp";

std::filesystem::path FolderOf(const std::filesystem::path& path) {
  return std::filesystem::absolute(path).parent_path();
}

std::string CaptionOf(const char* command, const std::string& step) {
  return step.empty() ? command : command + (' ' + step);
}

/// Puts off telling until its end.
class GraphUpdate {
 public:
  explicit GraphUpdate(TxyGraph& graph) : graph_(graph) { graph_.BeginUpdate(); }
  ~GraphUpdate() { graph_.EndUpdate(); }
  GraphUpdate(const GraphUpdate&) = delete;
  GraphUpdate& operator=(const GraphUpdate&) = delete;

 private:
  TxyGraph& graph_;
};

bool Exists(const std::filesystem::path& path) {
  std::error_code ignored;  // a path that cannot be looked at cannot be read either
  return std::filesystem::exists(path, ignored);
}

}  // namespace

Document::Document(std::string name, LongWork& work, Prompt& prompt, QObject* parent)
    : QObject(parent), name_(std::move(name)), caption_(name_), work_(work), prompt_(prompt) {
  DefaultAppearance(graph_, name_);
  graph_.SetListener([this](GraphChange change) { TellChange(change); });
  connect(&history_, &EditHistory::moved, this, &Document::HistoryMoved);
  HistoryMoved();
}

void Document::TellChange(GraphChange change) {
  const std::size_t children = graph_.Children().size();
  if (zooms_.size() != children + 1) {
    zooms_.resize(1);  // whose scales the others are cannot be told any more
    zooms_.resize(children + 1);
  }
  selected_child_ = SelectedChild();
  emit graphChanged(change);
}

std::optional<std::size_t> Document::SelectedChild() const {
  const bool there = selected_child_ && *selected_child_ < graph_.Children().size();
  return there ? selected_child_ : std::nullopt;
}

void Document::SelectChild(std::optional<std::size_t> child) {
  if (child == SelectedChild() || (child && *child >= graph_.Children().size())) return;
  selected_child_ = child;
  TellChange(GraphChange::CurrentSeries);
}

const TxyGraph& Document::Graph() const {
  const std::optional<std::size_t> child = SelectedChild();
  if (!child) return graph_;
  return *graph_.Children()[*child];
}

TxyGraph& Document::Graph() {
  return const_cast<TxyGraph&>(std::as_const(*this).Graph());
}

ZoomStack& Document::ZoomOf(std::optional<std::size_t> child) {
  return zooms_.at(child && *child + 1 < zooms_.size() ? *child + 1 : 0);
}

const ZoomStack& Document::Zoom() const {
  return const_cast<Document*>(this)->Zoom();
}

bool Document::Edit(const std::string& name, const std::function<void(TxyGraph&)>& change,
                    Merging merging) {
  OpenEdit step(*this, name, merging);
  {
    const GraphUpdate whole(graph_);
    TxyGraph& graph = Graph();
    std::optional<GraphUpdate> part;
    if (&graph != &graph_) part.emplace(graph);
    change(graph);
  }
  note_.clear();  // what was said of the data read may hold no more
  return step.Finish();
}

void Document::Undo() {
  note_.clear();
  history_.Undo();
}

void Document::Redo() {
  note_.clear();
  history_.Redo();
}

void Document::HistoryMoved() {
  graph_.SetChanged(Changed());
  undo_caption_ = CaptionOf("&Undo", history_.UndoName());
  redo_caption_ = CaptionOf("&Redo", history_.RedoName());
  emit stateChanged();
}

void Document::Forget(bool changed) {
  history_.Clear();
  SetChanged(changed);
}

bool Document::Begin(const DocumentFiles& files) {
  const std::string extension = LowerExtension(files.graph_or_template);
  if (extension == ".ttp") template_ = files.graph_or_template;
  if (extension == ".tgr") graph_file_ = files.graph_or_template;
  data_folder_ = std::filesystem::current_path();
  if (files.graph_or_template.empty() && !files.default_template.empty()) {
    LoadDefaultTemplate(files.default_template);
  } else {
    Reload();
    if (!files.graph_or_template.empty()) data_folder_ = FolderOf(files.graph_or_template);
  }
  try {
    if (!files.data.empty()) loaded_successfully_ = ReadDataFile(files.data);
    if (!files.data_set.empty()) loaded_successfully_ = LoadDataFromFile(files.data_set);
  } catch (...) {
    loaded_successfully_ = false;
    throw;
  }
  Forget(Changed());  // how a window begins is no step
  return loaded_successfully_;
}

void Document::LoadDefaultTemplate(const std::filesystem::path& path) {
  try {
    LoadGraphFile(path);
  } catch (const FileError& error) {
    prompt_.Tell(error.what());
    Reload();
  }
}

void Document::Reload() {
  SelectChild(std::nullopt);
  if (!graph_file_.empty()) {
    LoadGraphFile(graph_file_);
  } else if (!template_.empty()) {
    LoadGraphFile(template_);
  } else {
    DefaultAppearance(graph_, name_);
  }
  note_.clear();
  Forget(false);
}

void Document::LoadGraphFile(const std::filesystem::path& path) {
  SelectChild(std::nullopt);
  for (ZoomStack& zoom : zooms_) zoom.Clear();
  if (!Exists(path)) {
    DefaultAppearance(graph_, name_);
    Forget(false);
    return;
  }
  TakeState(Read([path](Progress&) { return ReadGraph(path); }));
  look_.own = true;
  const std::string extension = LowerExtension(path);
  if (extension == ".tgr") graph_file_ = path;
  if (extension == ".ttp") {
    template_ = path;
    if (LowerAscii(path.filename().string()) == kDefaultTemplateName) {
      Appearance appearance = graph_.GetAppearance();
      appearance.title_of_graph = name_;
      graph_.SetAppearance(appearance);
    }
  }
  ShowPath(path);
  SettleTooManyPoints();
  told_.clear();
  TellMissingPictures(graph_);
  Forget(false);
}

bool Document::ReadDataFile(const std::filesystem::path& path) {
  const GraphState before = Graph().State();
  const ReadResult result =
      Read([before, path](Progress& progress) { return ReadData(before, path, progress); });
  if (result.cancelled) return false;
  if (!SelectedChild()) data_file_ = path;  // the window is called by its own data
  data_folder_ = FolderOf(path);
  TakeNewData("Load Data", before, result);
  return true;
}

bool Document::AddData(const std::string& step,
                       const std::function<ReadResult(const GraphState&, Progress&)>& reading) {
  const GraphState before = Graph().State();
  const ReadResult result =
      Read([&before, &reading](Progress& progress) { return reading(before, progress); });
  if (result.cancelled) return false;
  TakeNewData(step, before, result);
  return true;
}

void Document::TakeNewData(const std::string& step, const GraphState& before,
                           const ReadResult& result) {
  OpenEdit edit(*this, step);
  if (!SelectedChild()) look_.arranged_for = {};
  TakeState(result);
  SettleTooManyPoints();
  const bool data_alone = before.series.empty() && SameLook(before, result.state);
  if (SelectedChild() && data_alone) ArrangeChild();
  edit.Finish();
  TellMissingPictures(graph_);
}

bool Document::LoadDataFromFile(const std::filesystem::path& path) {
  const std::string extension = LowerExtension(path);
  if (extension == ".tgr" || extension == ".ttp") {
    SelectedChild() ? LoadGraphIntoChild(path) : LoadGraphFile(path);
    return true;
  }
  if (extension != ".tds") return ReadDataFile(path);
  const GraphState before = Graph().State();
  const ReadResult result = Read([before, path](Progress&) { return ReadDataSet(before, path); });
  data_folder_ = FolderOf(path);
  TakeStep("Load DataSet", result);
  return true;
}

void Document::LoadGraphIntoChild(const std::filesystem::path& path) {
  ReadResult result = Read([path](Progress&) { return ReadGraph(path); });
  // The place that the file stores is a window's.
  const Dimensions place = Graph().GetDimensions();
  result.state.dimensions.hor_position = place.hor_position;
  result.state.dimensions.ver_position = place.ver_position;
  result.state.dimensions.hor_size = place.hor_size;
  result.state.dimensions.ver_size = place.ver_size;
  TakeStep("Load Graph", result);
  TellMissingPictures(graph_);
}

void Document::ArrangeChild() {
  const QSizeF size(Graph().ClientWidth(), Graph().ClientHeight());
  SeparateQuantities(Graph());
  ApplyFinishedLook(Graph(), size, TextMetrics());
}

bool Document::Refresh() {
  const auto refreshed = [this](const TxyGraph& graph) {
    std::vector<std::size_t> all(graph.SeriesCount());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return ReadAgain(graph, all);
  };
  const ReadResult whole = refreshed(graph_);
  std::vector<ReadResult> parts;
  bool cancelled = whole.cancelled;
  for (const auto& child : graph_.Children()) {
    if (!cancelled) cancelled = parts.emplace_back(refreshed(*child)).cancelled;
  }
  if (cancelled) return false;
  // Data refreshed time and again would fill the memory with their past.
  OpenEdit step(*this, "Refresh Data", Merging::WithLikeStep);
  graph_.SetState(whole.state);
  for (std::size_t i = 0; i < parts.size(); ++i) graph_.Children()[i]->SetState(parts[i].state);
  note_ = whole.note;
  SettleTooManyPoints();
  step.Finish();
  return true;
}

ReadResult Document::ReadAgain(const TxyGraph& graph, const std::vector<std::size_t>& which) {
  const GraphState before = graph.State();
  return Read([before, which](Progress& progress) { return Refreshed(before, which, progress); });
}

void Document::SaveGraphFile(const std::filesystem::path& path) {
  Write([state = graph_.State(), path] { WriteGraph(state, path); });
  (LowerExtension(path) == ".ttp" ? template_ : graph_file_) = path;
  ShowPath(path);
  SetChanged(false);
}

void Document::SaveDataFile(const std::filesystem::path& path) {
  Write([state = graph_.State(), path] { WriteDataText(state, path); });
  data_file_ = path;
  data_folder_ = FolderOf(path);
}

void Document::SaveDataSetFile(const std::filesystem::path& path) {
  Write([state = Graph().State(), path] { WriteDataSet(state, path); });
}

void Document::FinishLook(QSizeF size) {
  if (look_.own || look_.arranged_for == size || !graph_.HasPoints()) return;
  // What the user has zoomed into is not disturbed by a window's new size.
  if (!look_.arranged_for.isEmpty() && !zooms_.front().IsEmpty()) return;
  if (look_.arranged_for.isEmpty()) SeparateQuantities(graph_);
  look_.arranged_for = size;
  FinishedLookOptions options;
  options.title = data_file_.stem().string();
  ApplyFinishedLook(graph_, size, TextMetrics(), options);
}

ReadResult Document::Read(const std::function<ReadResult(Progress&)>& reading) {
  ReadResult result;
  work_.Run({"Loading data"}, [&](Progress& progress) { result = reading(progress); });
  return result;
}

void Document::Write(const std::function<void()>& writing) {
  work_.Run({"Saving Graph File", Cancellable::No}, [&](Progress&) { writing(); });
}

void Document::TakeState(const ReadResult& result) {
  Graph().SetState(result.state);
  note_ = result.note;
}

void Document::TakeStep(const std::string& name, const ReadResult& result, Merging merging) {
  OpenEdit step(*this, name, merging);
  TakeState(result);
  SettleTooManyPoints();
  step.Finish();
}

void Document::SettleTooManyPoints() {
  std::vector<std::size_t> switched;
  TxyGraph& graph = Graph();
  graph.SettleTooManyPoints(prompt_, [&](TSeries& series) {
    for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
      if (&graph.Series(i) == &series) switched.push_back(i);
    }
  });
  if (switched.empty()) return;
  try {
    const ReadResult result = ReadAgain(graph, switched);
    if (!result.cancelled) TakeState(result);
  } catch (const FileError& error) {
    // What was loaded stands; only its thinning has to wait for the source.
    prompt_.Tell(error.what());
  }
}

void Document::TellMissingPictures(const TxyGraph& graph) {
  const std::string& trouble = graph.Background().Error();
  if (!trouble.empty() && told_.insert(trouble).second) prompt_.Tell(trouble);
  for (const auto& child : graph.Children()) TellMissingPictures(*child);
}

void Document::ShowPath(const std::filesystem::path& path) {
  data_folder_ = FolderOf(path);
  caption_ = name_ + " ( " + path.string() + " )";
  emit captionChanged();
}

}  // namespace tarnwick
