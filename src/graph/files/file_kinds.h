// The kinds of file that the program reads and writes, as rows of one table that every open, save, drop, command line and
// batch command asks. Knows endings and writers; knows no dialog and no window.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "graph/pictures/picture_export.h"
#include "stream/section_writer.h"

namespace tarnwick {

/// What a file holds, and so how it is read.
enum class FileHolds {
  Graph,        ///< the whole graph
  Template,     ///< a graph without points
  DataSet,      ///< one DataSet
  Table,        ///< columns of numbers; whatever no other kind claims is tried as one
  FitFunction,  ///< a model, of which a graph knows nothing
  Picture
};

/// What writing a kind needs beside the graph.
enum class FileNeeds { Nothing, DataSet, Size };

/// When a file of a kind enters the list of recent files.
enum class Remembered { Never, WhenOpened, Always };

/// What is written. Everything but the graph has a default.
struct FileContents {
  const TxyGraph& graph;
  std::size_t series = 0;               ///< for kinds that need a DataSet
  WriterMode mode = WriterMode::Typed;  ///< for graph files, templates and DataSet files
  PictureOptions picture = {};          ///< for kinds that need a size
};

/// Writes a file whole or not at all. Throws FileError, and Error for what is needed and missing.
using WriteFile = void (*)(const std::filesystem::path& path, const FileContents& contents);

/// What of the graph such a file cannot keep, a sentence; empty for nothing.
using LeavesOut = std::string (*)(const TxyGraph& graph);

/// One kind of file. A row's place is that of its filter in the dialogs.
struct FileKind {
  std::string_view ending;            ///< ".tgr", lower case; empty: every ending that has no row
  std::string_view save_filter = {};  ///< as the Save dialog shows it; empty: not listed there
  std::string_view open_filter = {};  ///< as the Open dialog shows it; rows may share one
  /// What such a file keeps, for whoever chooses a name. A kind that needs a size is described by that.
  std::string_view meaning = {};
  FileHolds holds = FileHolds::Table;
  bool reads = false;
  bool packed = false;        ///< the ending of what is inside stands before
  WriteFile write = nullptr;  ///< null: never written
  FileNeeds needs = FileNeeds::Nothing;
  LeavesOut leaves_out = nullptr;  ///< null: nothing that its meaning does not tell
  Remembered remembered = Remembered::WhenOpened;
};

std::span<const FileKind> FileKinds();

/// The kind that the ending of `path` means, in any case. Every path has one: that of endings without a meaning is written
/// by nobody.
const FileKind& KindOf(const std::filesystem::path& path);

/// What data of a file are called: its name without endings, "run" for "/data/run.csv.gz".
std::string NameOfData(const std::filesystem::path& path);

/// The kind as which `path` is read: KindOf, or a table where that kind cannot be read.
const FileKind& KindToRead(const std::filesystem::path& path);

/// Graph files, templates and DataSet files: the one layout of sections.
bool HoldsSections(const FileKind& kind);

/// The endings that are written and pass `wanted`, for messages: ".tgr, .ttp and .dat". Those that only repeat another
/// ending's kind are left out.
std::string WrittenEndings(bool (*wanted)(const FileKind&));

/// Writes a picture by the ending of `path`. Throws Error naming an ending that means none, FileError when writing fails.
void WritePicture(const TxyGraph& graph, const std::filesystem::path& path,
                  const PictureOptions& options = {});

/// One entry of a file dialog's list and the kinds that it lets through; the kind without an ending stands for every file.
struct FileFilter {
  std::string_view text;
  std::vector<const FileKind*> kinds;
};

/// The entries in the order in which dialogs list them.
std::vector<FileFilter> OpenFilters();
std::vector<FileFilter> SaveFilters();

}  // namespace tarnwick
