#include "desk/document/document_files.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/error.h"
#include "base/text_encoding.h"
#include "data/import/import_file.h"
#include "data/import/source_place.h"
#include "desk/document/document.h"
#include "desk/document/finish_look.h"
#include "desk/document/open_edit.h"
#include "desk/document/reading_told.h"
#include "desk/document/refresh_documents.h"
#include "desk/prompts/password_prompt.h"
#include "desk/settings/program_paths.h"
#include "graph/background_image.h"
#include "graph/files/file_kinds.h"
#include "graph/graph_state_compare.h"
#include "graph/layout/finished_look.h"
#include "graph/series_of_whole.h"
#include "results/made_series.h"
#include "sources/database/database_source.h"

namespace tarnwick {
namespace {

bool Exists(const std::filesystem::path& path) {
  std::error_code ignored;  // a path that cannot be looked at cannot be read either
  return std::filesystem::exists(path, ignored);
}

/// A template that has nothing but the look that graphs begin with arranges nobody's graph.
bool LooksAsBegun(const TxyGraph& graph, const std::string& name) {
  TxyGraph begun;
  DefaultAppearance(begun, name);
  return SameState(graph.State(), begun.State());
}

}  // namespace

std::string DocumentFiles::Caption() const {
  std::string caption = document_.Name();
  if (!shown_.empty()) caption += " ( " + shown_.string() + " )";
  if (graph_file_.empty() && !data_file_.empty()) caption += " - " + data_file_.filename().string();
  return caption;
}

void DocumentFiles::BeginHistory(bool changed) {
  document_.History().Clear();
  document_.History().SetChanged(changed);
  as_opened_ = false;
}

bool DocumentFiles::Begin(const StartFiles& files) {
  const FileHolds holds = KindOf(files.graph_or_template).holds;
  if (holds == FileHolds::Template) template_ = files.graph_or_template;
  if (holds == FileHolds::Graph) graph_file_ = files.graph_or_template;
  std::error_code ignored;
  data_folder_ = std::filesystem::current_path(ignored);
  if (!files.graph_or_template.empty()) {
    LoadGraphFile(files.graph_or_template);
    data_folder_ = FolderOfFile(files.graph_or_template);
  } else if (!files.default_template.empty()) {
    LoadDefaultTemplate(files.default_template);
  } else {
    BeginEmpty();
  }
  began_with_data_ = !files.data.empty() || !files.data_set.empty();
  nothing_to_save_ = true;
  if (!files.data.empty() && !ReadDataFile(files.data, files.reading)) return false;
  if (!files.data_set.empty() && !LoadDataFromFile(files.data_set)) return false;
  nothing_to_save_ = false;
  BeginHistory(document_.History().Changed());  // how a window begins is no step
  as_opened_ = !files.data.empty();
  return true;
}

void DocumentFiles::LoadDefaultTemplate(const std::filesystem::path& path) {
  try {
    LoadGraphFile(path);
  } catch (const FileError& error) {
    document_.GetPrompt().Tell(error.what());
    BeginEmpty();
  }
}

void DocumentFiles::BeginEmpty() {
  document_.SelectChild(std::nullopt);
  document_.Zooms().Clear();
  document_.Told().Clear();
  DefaultAppearance(document_.WholeGraph(), document_.Name());
  BeginHistory(false);
}

std::filesystem::path DocumentFiles::ReloadedFrom() const {
  if (!graph_file_.empty()) return graph_file_;
  return began_with_data_ ? std::filesystem::path() : template_;
}

void DocumentFiles::Reload() {
  session_start_ = std::chrono::system_clock::now();
  const std::filesystem::path path = ReloadedFrom();
  if (path.empty()) {
    document_.SelectChild(std::nullopt);
    document_.History().UndoAll();
  } else {
    const ReadResult result = Read([path](Progress&) { return ReadGraph(path); });
    document_.SelectChild(std::nullopt);
    OpenEdit step(document_, "Discard Changes");
    ShowGraph(path, result);
    const bool own = document_.Look().own;
    step.Finish();
    document_.Look().own = own;  // the file's look is nobody's edit
  }
  note_.clear();
  document_.History().SetChanged(false);
}

void DocumentFiles::LoadGraphFile(const std::filesystem::path& path) {
  if (!Exists(path)) return BeginEmpty();
  const ReadResult result = Read([path](Progress&) { return ReadGraph(path); });
  document_.SelectChild(std::nullopt);
  ShowGraph(path, result);
  BeginHistory(false);
}

void DocumentFiles::ShowGraph(const std::filesystem::path& path, const ReadResult& result) {
  document_.Zooms().Clear();
  document_.Told().Clear();
  TakeState(result);
  document_.Look().own = true;
  const FileHolds holds = KindOf(path).holds;
  if (holds == FileHolds::Graph) {
    graph_file_ = path;
    graph_stamp_ = StampOf(path);
  }
  if (holds == FileHolds::Template) {
    template_ = path;
    graph_file_.clear();  // what it holds is not what the window shows now: saving asks for a name
    if (LowerAscii(path.filename().string()) == kDefaultTemplateName) {
      Appearance appearance = document_.WholeGraph().GetAppearance();
      appearance.title_of_graph = document_.Name();
      document_.WholeGraph().SetAppearance(appearance);
    }
    document_.Look().own = !LooksAsBegun(document_.WholeGraph(), document_.Name());
  }
  ShowPath(path);
  SettleTooManyPoints();
  TellOfAnotherGraph();
}

void DocumentFiles::Recover(const std::filesystem::path& copy,
                            const std::filesystem::path& graph_file,
                            const std::filesystem::path& data_file) {
  ReadResult result = Read([copy](Progress&) { return ReadGraph(copy); });
  result.points.clear();  // the copy is no file of the user's
  TakeState(result);
  document_.Look().own = true;
  graph_file_ = graph_file;
  data_file_ = data_file;
  std::error_code ignored;
  data_folder_ =
      data_file.empty() ? std::filesystem::current_path(ignored) : FolderOfFile(data_file);
  if (!graph_file.empty()) ShowPath(graph_file);
  TellOfAnotherGraph();
  BeginHistory(true);
}

/// What was told of the graph before may hold of this one anew.
void DocumentFiles::TellOfAnotherGraph() {
  told_.clear();
  document_.ForgetFailedRegressions();
  TellMissingPictures(document_.WholeGraph());
}

bool DocumentFiles::ReadDataFile(const std::filesystem::path& path, const ImportOptions* reading) {
  const GraphState before = document_.Graph().State();
  const ImportOptions options = reading ? *reading : ImportOptions();
  const ReadResult result = Read([before, path, options](Progress& progress) {
    return ReadData(before, path, options, progress);
  });
  if (result.cancelled) return false;
  if (!document_.SelectedChild()) ShowDataFile(path);  // the window is called by its own data
  data_folder_ = FolderOfFile(path);
  TakeNewData("Load Data", before, result);
  return true;
}

bool DocumentFiles::ReadPlace(const TDSInfo& place) {
  const std::size_t before = document_.Graph().SeriesCount();
  const bool read = AddData("Open Source", [&place](const GraphState& into, Progress& progress) {
    return ReadPlaceInto(into, place, progress);
  });
  if (!read) return false;
  std::vector<const TSeries*> added;
  for (std::size_t i = before; i < document_.Graph().SeriesCount(); ++i) {
    added.push_back(&document_.Graph().Series(i));
  }
  document_.Live().StartOf(added);
  return true;
}

bool DocumentFiles::AddData(
    const std::string& step,
    const std::function<ReadResult(const GraphState&, Progress&)>& reading) {
  const GraphState before = document_.Graph().State();
  const ReadResult result =
      Read([&before, &reading](Progress& progress) { return reading(before, progress); });
  if (result.cancelled) return false;
  TakeNewData(step, before, result);
  return true;
}

void DocumentFiles::TakeNewData(const std::string& step, const GraphState& before,
                                const ReadResult& result) {
  OpenEdit edit(document_, step);
  if (!document_.SelectedChild()) document_.Look().arranged_for = {};
  TakeState(result);
  SettleTooManyPoints();
  const bool data_alone = before.series.empty() && SameLook(before, result.state);
  if (document_.SelectedChild() && data_alone) ArrangeInsertedGraph(document_);
  edit.Finish();
  TellMissingPictures(document_.WholeGraph());
}

bool DocumentFiles::LoadDataFromFile(const std::filesystem::path& path) {
  const FileHolds holds = KindToRead(path).holds;
  if (holds == FileHolds::Graph || holds == FileHolds::Template) {
    document_.SelectedChild() ? LoadGraphIntoChild(path) : LoadGraphFile(path);
    return true;
  }
  if (holds != FileHolds::DataSet) return ReadDataFile(path);
  const GraphState before = document_.Graph().State();
  const ReadResult result = Read([before, path](Progress&) { return ReadDataSet(before, path); });
  data_folder_ = FolderOfFile(path);
  TakeStep("Load DataSet", result);
  return true;
}

void DocumentFiles::LoadGraphIntoChild(const std::filesystem::path& path) {
  ReadResult result = Read([path](Progress&) { return ReadGraph(path); });
  // The place that the file stores is a window's.
  const Dimensions place = document_.Graph().GetDimensions();
  result.state.dimensions.hor_position = place.hor_position;
  result.state.dimensions.ver_position = place.ver_position;
  result.state.dimensions.hor_size = place.hor_size;
  result.state.dimensions.ver_size = place.ver_size;
  TakeStep("Load Graph", result);
  TellMissingPictures(document_.WholeGraph());
}

bool DocumentFiles::Refresh() {
  Document* const one[] = {&document_};
  return ReadDocumentsAgain(one);
}

void DocumentFiles::TakeRefreshed(const ReadResult& result) {
  // Data refreshed time and again would fill the memory with their past.
  OpenEdit step(document_, "Refresh Data", Merging::WithLikeStep);
  TakeReadAgain(result, step);
}

void DocumentFiles::TakeView(const std::vector<PointsOfFile>& points, const std::string& told) {
  const GraphState whole = document_.WholeGraph().State();
  as_read_.Add(points, whole);
  filed_.Add(points, whole);
  document_.Told().Drop(ToldAbout::Thinning);
  document_.Told().Add({{ToldAbout::Thinning, told}});
  emit document_.stateChanged();
}

bool DocumentFiles::ReadBy(const std::vector<NewSource>& sources,
                           const std::vector<std::string>& columns) {
  const GraphState before = document_.WholeGraph().State();
  const std::vector<TSeries*> known = SeriesOfWhole(document_.WholeGraph());
  const bool guess_holds = std::ranges::all_of(sources, [&known](const NewSource& one) {
    return SameLayout(one.source, known.at(one.place)->Source());
  });
  const ReadResult result = Read(
      [&](Progress& progress) { return tarnwick::ReadBy(before, sources, columns, progress); });
  if (result.cancelled) return false;
  {
    OpenEdit step(document_, "Edit Data Source");
    if (!guess_holds) document_.Told().Clear();
    TakeReadAgain(result, step);
  }
  const std::vector<TSeries*> whole = SeriesOfWhole(document_.WholeGraph());
  std::vector<const TSeries*> followed;
  for (const NewSource& one : sources) {
    if (one.source.Follow) followed.push_back(whole.at(one.place));
  }
  document_.Live().StartOf(followed);
  return true;
}

bool DocumentFiles::LoadAllRows() {
  const GraphState before = document_.WholeGraph().State();
  const ReadResult result =
      Read([&before](Progress& progress) { return WithAllRows(before, progress); });
  if (result.cancelled) return false;
  OpenEdit step(document_, "Load All Rows");
  TakeReadAgain(result, step);
  return true;
}

void DocumentFiles::TakeReadAgain(const ReadResult& result, OpenEdit& step) {
  TakeWhole(result);
  document_.Told().ReadAgain(ToldOfReading(document_.WholeGraph(), as_read_));
  SettleTooManyPoints();
  EditHistory& history = document_.History();
  const bool before = history.ResultsOutdated();
  history.SetResultsOutdated(before || HasMadeSeries(document_.WholeGraph()));
  if (!step.Finish()) history.SetResultsOutdated(before);
  document_.Live().FollowReading();
  // What is told may have changed without a step, or behind it.
  emit document_.stateChanged();
}

void DocumentFiles::FollowHistory() {
  if (!document_.History().ResultsOutdated()) return document_.Told().Drop(ToldAbout::Outdated);
  const char* const text =
      "what was computed from the data is of the data before: Analysis, Recompute does it anew";
  document_.Told().Add({{ToldAbout::Outdated, text}});
}

ReadResult DocumentFiles::ReadAgain(const std::vector<std::size_t>& which) {
  const GraphState before = document_.WholeGraph().State();
  return Read([before, which](Progress& progress) { return Refreshed(before, which, progress); });
}

void DocumentFiles::SaveGraphFile(const std::filesystem::path& path) {
  const GraphState state = document_.WholeGraph().State();
  Write([state, path] { WriteByKind(state, path); });
  const bool look_only = KindOf(path).holds == FileHolds::Template;
  (look_only ? template_ : graph_file_) = path;
  if (!look_only) graph_stamp_ = StampOf(path);
  filed_.Rewritten(path, look_only ? std::vector<PointsOfFile>() : PointsOfGraph(state, path));
  ShowPath(path);
  document_.History().SetChanged(false);
}

void DocumentFiles::SaveDataFile(const std::filesystem::path& path) {
  Write([state = document_.WholeGraph().State(), path] { WriteByKind(state, path); });
  filed_.Rewritten(path, {});
  ShowDataFile(path);
  data_folder_ = FolderOfFile(path);
}

void DocumentFiles::SaveDataSetFile(const std::filesystem::path& path) {
  Write([state = document_.Graph().State(), path] { WriteByKind(state, path); });
  filed_.Rewritten(path, {});
}

bool DocumentFiles::GraphFileChanged() const {
  if (graph_file_.empty() || !graph_stamp_) return false;
  const std::optional<FileStamp> now = StampOf(graph_file_);
  return now && now != graph_stamp_;
}

bool DocumentFiles::ClosingLoses() const {
  if (nothing_to_save_) return false;
  return document_.History().Changed() || GraphFileChanged() ||
         !filed_.HoldAll(document_.WholeGraph().State());
}

std::string DocumentFiles::LossUnchanged() const {
  return GraphFileChanged() ? "Its file was changed by another program since."
                            : "It holds points that lie in no file.";
}

bool DocumentFiles::EndingLoses() const {
  if (!ClosingLoses()) return false;
  const std::vector<TSeries*> all = SeriesOfWhole(document_.WholeGraph());
  return !as_opened_ || document_.History().LastStep() != 0 ||
         !std::ranges::all_of(all, [this](const TSeries* one) { return LiesInItsSource(*one); });
}

/// Views of a thinned table come and go.
bool DocumentFiles::LiesInItsSource(const TSeries& series) const {
  if (filed_.Hold(series.Points())) return true;
  const TDSInfo& source = series.Source();
  return IsThinned(source) && !source.PointsEdited && as_read_.Holds(series) &&
         Exists(SourcePlace(source));
}

ReadResult DocumentFiles::Read(const std::function<ReadResult(Progress&)>& reading) {
  ReadResult result;
  RunWithPasswords(document_.GetPrompt(), [&] {
    document_.Work().Run({"Loading data"}, [&](Progress& progress) { result = reading(progress); });
  });
  return result;
}

void DocumentFiles::Write(const std::function<void()>& writing) {
  document_.Work().Run({"Saving Graph File", Cancellable::No}, [&](Progress&) { writing(); });
}

void DocumentFiles::RememberPoints(const ReadResult& result) {
  const GraphState whole = document_.WholeGraph().State();
  as_read_.Add(result.points, whole);
  filed_.Add(result.points, whole);
}

void DocumentFiles::TakeState(const ReadResult& result) {
  document_.Graph().SetState(result.state);
  RememberPoints(result);
  note_ = result.note;
  document_.Told().Add(result.told);
}

void DocumentFiles::TakeWhole(const ReadResult& result) {
  document_.WholeGraph().SetState(result.state);
  RememberPoints(result);
  note_ = result.note;
}

void DocumentFiles::TakeStep(const std::string& name, const ReadResult& result) {
  OpenEdit step(document_, name);
  TakeState(result);
  SettleTooManyPoints();
  step.Finish();
}

void DocumentFiles::SettleTooManyPoints() {
  const std::vector<TSeries*> whole = SeriesOfWhole(document_.WholeGraph());
  std::vector<std::size_t> switched;
  const auto reload = [&](TSeries& series) {
    const auto place = std::ranges::find(whole, &series) - whole.begin();
    switched.push_back(static_cast<std::size_t>(place));
  };
  document_.WholeGraph().SettleTooManyPoints(document_.GetPrompt(), reload);
  if (switched.empty()) return;
  try {
    const ReadResult result = ReadAgain(switched);
    if (result.cancelled) return;
    TakeWhole(result);
    document_.Told().Add(ToldOfReading(document_.WholeGraph(), as_read_));
  } catch (const Error& error) {
    // What was loaded stands; only its thinning has to wait for the source.
    document_.GetPrompt().Tell(error.what());
  }
}

void DocumentFiles::TellMissingPictures(const TxyGraph& graph) {
  const std::string& trouble = graph.Background().Error();
  if (!trouble.empty() && told_.insert(trouble).second) document_.GetPrompt().Tell(trouble);
  for (const auto& child : graph.Children()) TellMissingPictures(*child);
}

void DocumentFiles::ShowDataFile(const std::filesystem::path& path) {
  data_file_ = path;
  emit document_.captionChanged();
}

void DocumentFiles::ShowPath(const std::filesystem::path& path) {
  data_folder_ = FolderOfFile(path);
  shown_ = path;
  emit document_.captionChanged();
}

}  // namespace tarnwick
