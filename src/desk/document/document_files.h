// A document's files: those it was read from and written to, and the roads in and out. Knows documents and the file
// formats' one place (document_io.h); works long through LongWork, asks through Prompt; knows no widget.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "desk/document/document_io.h"
#include "desk/document/file_stamp.h"
#include "desk/document/filed_points.h"
#include "desk/document/points_as_read.h"

namespace tarnwick {

class Document;
class TSeries;
class OpenEdit;
class TxyGraph;
struct ImportOptions;

/// The files a document begins with; empty paths for none.
struct StartFiles {
  std::filesystem::path graph_or_template;
  std::filesystem::path
      default_template;  ///< used when nothing else is given; a damaged one is told and left out
  std::filesystem::path data;
  std::filesystem::path data_set;
  const ImportOptions* reading = nullptr;  ///< of the data; null: as is found out
};

class DocumentFiles {
 public:
  /// Part of `document`, which is its owner.
  explicit DocumentFiles(Document& document) : document_(document) {}

  /// The document's name, after loading or saving a graph file or template its path, and of data that lie in no graph file
  /// yet the data file's name: "Graph_1 - pendulum.csv".
  std::string Caption() const;
  /// When the document last began anew: was opened or went back to its file.
  std::chrono::system_clock::time_point SessionStart() const { return session_start_; }
  /// Steps were made, undone or made again.
  void FollowHistory();
  /// A remark in passing on the last loading; empty for nothing.
  const std::string& Note() const { return note_; }
  void ForgetNote() { note_.clear(); }

  const std::filesystem::path& GraphFileName() const { return graph_file_; }
  /// True when the graph file is no longer what was read from it or written to it here: another program has replaced it.
  bool GraphFileChanged() const;
  const std::filesystem::path& DataFileName() const { return data_file_; }
  /// Where file dialogs start.
  const std::filesystem::path& DataFolder() const { return data_folder_; }
  void SetDataFolder(std::filesystem::path folder) { data_folder_ = std::move(folder); }
  /// What was read of its DataSets, since then edited or not.
  const PointsAsRead& AsRead() const { return as_read_; }
  PointsAsRead& AsRead() { return as_read_; }
  /// True when closing would lose something: changes, points that lie in no file, a graph whose file holds another by now. Never
  /// once reading the data file failed, or after GiveUp().
  bool ClosingLoses() const;
  /// What of that there is without a change, a sentence.
  std::string LossUnchanged() const;
  /// True when the end of the program would lose something: as closing, but for data that were opened and that no step has
  /// touched since. Opening their file again brings them, in whatever view.
  bool EndingLoses() const;
  /// The user does without what would be lost.
  void GiveUp() { nothing_to_save_ = true; }

  // Loading. All throw FileError and then leave the graph as it was; false when nothing was read (cancelled, or a kind of
  // file that cannot be loaded). A graph file or template begins a new history, data are a step of the present one.
  /// What creating a graph window does: the graph or template, then the data.
  bool Begin(const StartFiles& files);
  /// The file that Reload() reads: the graph file, else, unless the window began with data, the template; empty for none.
  std::filesystem::path ReloadedFrom() const;
  /// That file again, which must be there, as a step; without one all steps are undone, so that the window shows what it began
  /// with. The changed flag is cleared.
  void Reload();
  /// A path that does not exist gives the default appearance.
  void LoadGraphFile(const std::filesystem::path& path);
  /// What a window shows that was open and changed when its program was ended: the graph that lies in `copy`, changed,
  /// which belongs into `graph_file` and came from `data_file` (empty: none). For a new document.
  void Recover(const std::filesystem::path& copy, const std::filesystem::path& graph_file,
               const std::filesystem::path& data_file);
  bool ReadDataFile(const std::filesystem::path& path, const ImportOptions* reading = nullptr);
  /// One step: the data at a place that is no file, of which only kind and place are told; what comes by itself
  /// begins to come. Throws Error, too.
  bool ReadPlace(const TDSInfo& place);
  /// One step called `step` of what `reading` makes of the graph worked on and data from elsewhere. It runs as all reading
  /// does, maybe on another thread.
  bool AddData(const std::string& step,
               const std::function<ReadResult(const GraphState&, Progress&)>& reading);
  /// By extension: graph, template, DataSet file; anything else is tried as data.
  bool LoadDataFromFile(const std::filesystem::path& path);
  /// Reads the outside sources of all DataSets again, as ReadDocumentsAgain does.
  bool Refresh();
  /// One step of what reading the DataSets of the whole graph again made of it.
  void TakeRefreshed(const ReadResult& result);
  /// Points of DataSets of the whole graph gave way to others of their sources, which is no step, and `told` says which.
  void TakeView(const std::vector<PointsOfFile>& points, const std::string& told);
  /// One step: these DataSets of the whole graph read by other descriptions, and further columns of the first one's source
  /// as DataSets more. Throws as ReadBy of document_io.h.
  bool ReadBy(const std::vector<NewSource>& sources, const std::vector<std::string>& columns = {});
  /// Reads every row of the DataSets that show only some of theirs.
  bool LoadAllRows();

  // Saving. All throw FileError; the old file then stays.
  void SaveGraphFile(const std::filesystem::path& path);
  void SaveDataFile(const std::filesystem::path& path);
  void SaveDataSetFile(const std::filesystem::path& path);

 private:
  void LoadDefaultTemplate(const std::filesystem::path& path);
  void BeginEmpty();
  void ShowGraph(const std::filesystem::path& path, const ReadResult& result);
  ReadResult Read(const std::function<ReadResult(Progress&)>& reading);
  void RememberPoints(const ReadResult& result);
  void Write(const std::function<void()>& writing);
  void TakeState(const ReadResult& result);
  void TakeWhole(const ReadResult& result);
  void TakeReadAgain(const ReadResult& result, OpenEdit& step);
  void TakeNewData(const std::string& step, const GraphState& before, const ReadResult& result);
  void TakeStep(const std::string& name, const ReadResult& result);
  void TellOfAnotherGraph();
  void BeginHistory(bool changed);
  bool LiesInItsSource(const TSeries& series) const;
  void LoadGraphIntoChild(const std::filesystem::path& path);
  /// The whole graph with the DataSets at these places of SeriesOfWhole read again.
  ReadResult ReadAgain(const std::vector<std::size_t>& which);
  void SettleTooManyPoints();
  void TellMissingPictures(const TxyGraph& graph);
  void ShowPath(const std::filesystem::path& path);
  void ShowDataFile(const std::filesystem::path& path);

  Document& document_;
  std::filesystem::path shown_;  // in the caption
  std::chrono::system_clock::time_point session_start_ = std::chrono::system_clock::now();
  std::string note_;
  std::filesystem::path graph_file_;
  std::optional<FileStamp> graph_stamp_;  // of that file when it was read or written
  std::filesystem::path template_;
  std::filesystem::path data_file_;
  std::filesystem::path data_folder_;
  FiledPoints filed_;
  PointsAsRead as_read_;
  bool began_with_data_ = false;
  bool nothing_to_save_ = false;
  bool as_opened_ = false;      // from data, until the first step
  std::set<std::string> told_;  // of background pictures that cannot be read
};

}  // namespace tarnwick
