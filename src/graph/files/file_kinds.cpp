#include "graph/files/file_kinds.h"

#include <algorithm>

#include "base/error.h"
#include "base/text_encoding.h"
#include "base/whole_file.h"
#include "base/word_list.h"
#include "graph/files/data_text_file.h"
#include "graph/files/graph_file.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

using Path = std::filesystem::path;

void WriteGraphFile(const Path& file, const FileContents& contents) {
  SaveGraph(contents.graph, file, {WithPoints::Yes, contents.mode});
}

void WriteTemplate(const Path& file, const FileContents& contents) {
  SaveGraph(contents.graph, file, {WithPoints::No, contents.mode});
}

void WriteDataSet(const Path& file, const FileContents& contents) {
  if (contents.series >= contents.graph.SeriesCount()) throw Error("No DataSet found!");
  SaveDataSetFile(contents.graph, contents.series, file, contents.mode);
}

void WriteDataText(const Path& file, const FileContents& contents) {
  SaveDataText(contents.graph, file);
}

void WriteCsv(const Path& file, const FileContents& contents) {
  WriteWholeFile(file, CsvText(contents.graph));
}

template <std::string (*kBytes)(const TxyGraph&, const PictureOptions&)>
void WriteBytes(const Path& file, const FileContents& contents) {
  WriteWholeFile(file, kBytes(contents.graph, contents.picture));
}

constexpr std::string_view kTables = "Data Files (*.dat;*.txt)";

constexpr FileKind Picture(std::string_view ending, std::string_view filter, WriteFile write) {
  return {.ending = ending,
          .save_filter = filter,
          .holds = FileHolds::Picture,
          .write = write,
          .needs = FileNeeds::Size};
}

constexpr FileKind Packed(std::string_view ending) {
  return {.ending = ending, .open_filter = kTables, .reads = true, .packed = true};
}

// The filters' texts are shown letter for letter. Those that dialogs have always had come first.
constexpr FileKind kKinds[] = {
    {.ending = ".tgr",
     .save_filter = "Tarnwick Graph File  (*.tgr)",
     .open_filter = "Tarnwick Graphs  (*.tgr)",
     .meaning = "Graph file: keeps everything",
     .holds = FileHolds::Graph,
     .reads = true,
     .write = &WriteGraphFile,
     .remembered = Remembered::Always},
    {.ending = ".ttp",
     .save_filter = "Tarnwick Graph Template (*.ttp)",
     .open_filter = "Tarnwick Templates  (*.ttp)",
     .meaning = "Template: keeps the look, not the points",
     .holds = FileHolds::Template,
     .reads = true,
     .write = &WriteTemplate,
     .remembered = Remembered::Always},
    {.ending = ".tds",
     .save_filter = "Tarnwick DataSet File (*.tds)",
     .meaning = "DataSet file: the current DataSet alone, not the whole graph",
     .holds = FileHolds::DataSet,
     .reads = true,
     .write = &WriteDataSet,
     .needs = FileNeeds::DataSet},
    {.ending = ".dat",
     .save_filter = "Data File  (*.dat)",
     .open_filter = kTables,
     .meaning = "Table of all points, as text with tabs: not the whole graph",
     .reads = true,
     .write = &WriteDataText,
     .leaves_out = &LeftOutOfTable,
     .remembered = Remembered::Always},
    {.ending = ".txt", .open_filter = kTables, .reads = true},
    Picture(".wmf", "Windows Metafile (*.wmf)", &WriteBytes<&WmfBytes>),
    Picture(".bmp", "Bitmap (*.bmp)", &WriteBytes<&BmpBytes>),
    Picture(".jpg", "JPEG Image (*jpg)", &WriteBytes<&JpegBytes>),
    {.ending = "",
     .save_filter = "All Files (*.*)",
     .open_filter = "All Files (*.*)",
     .reads = true},
    {.ending = ".csv",
     .save_filter = "Comma-Separated Values (*.csv)",
     .meaning = "Table of all points, as text with commas: not the whole graph",
     .reads = true,
     .write = &WriteCsv,
     .leaves_out = &LeftOutOfTable},
    Picture(".png", "PNG Image (*.png)", &WriteBytes<&PngBytes>),
    Picture(".gif", "GIF Image (*.gif)", &WriteBytes<&GifBytes>),
    Picture(".svg", "SVG Drawing (*.svg)", &WriteBytes<&SvgBytes>),
    Picture(".pdf", "PDF Page (*.pdf)", &WriteBytes<&PdfBytes>),
    Picture(".jpeg", "", &WriteBytes<&JpegBytes>),
    Packed(".gz"),
    Packed(".bz2"),
    Packed(".xz"),
    Packed(".zst"),
    {.ending = ".tmp", .reads = true, .remembered = Remembered::Never},
    {.ending = ".tfn", .holds = FileHolds::FitFunction, .reads = true},
};

const FileKind& KindOfEnding(std::string_view ending) {
  const auto* const found = std::ranges::find(kKinds, ending, &FileKind::ending);
  return found != std::end(kKinds) ? *found : KindOfEnding("");
}

/// Rows with the same text make one entry, at the place of the first.
std::vector<FileFilter> Filters(std::string_view FileKind::*text) {
  std::vector<FileFilter> filters;
  for (const FileKind& kind : kKinds) {
    const std::string_view shown = kind.*text;
    if (shown.empty()) continue;
    auto entry = std::ranges::find(filters, shown, &FileFilter::text);
    if (entry == filters.end()) entry = filters.insert(entry, {shown, {}});
    entry->kinds.push_back(&kind);
  }
  return filters;
}

}  // namespace

std::span<const FileKind> FileKinds() {
  return kKinds;
}

const FileKind& KindOf(const Path& path) {
  return KindOfEnding(LowerAscii(path.extension().string()));
}

std::string NameOfData(const Path& path) {
  return (KindOf(path).packed ? path.stem() : path).stem().string();
}

const FileKind& KindToRead(const Path& path) {
  const FileKind& kind = KindOf(path);
  return kind.reads ? kind : KindOfEnding("");
}

bool HoldsSections(const FileKind& kind) {
  return kind.holds == FileHolds::Graph || kind.holds == FileHolds::Template ||
         kind.holds == FileHolds::DataSet;
}

std::string WrittenEndings(bool (*wanted)(const FileKind&)) {
  std::vector<std::string> endings;
  for (const FileKind& kind : kKinds) {
    if (kind.write && !kind.save_filter.empty() && wanted(kind)) endings.emplace_back(kind.ending);
  }
  return Listed(endings);
}

void WritePicture(const TxyGraph& graph, const Path& path, const PictureOptions& options) {
  const FileKind& kind = KindOf(path);
  if (kind.holds != FileHolds::Picture) {
    throw Error(
        "no kind of picture ends in \"" + LowerAscii(path.extension().string()) + "\"; " +
        WrittenEndings([](const FileKind& one) { return one.holds == FileHolds::Picture; }) +
        " do");
  }
  kind.write(path, {.graph = graph, .picture = options});
}

std::vector<FileFilter> OpenFilters() {
  return Filters(&FileKind::open_filter);
}

std::vector<FileFilter> SaveFilters() {
  return Filters(&FileKind::save_filter);
}

}  // namespace tarnwick
