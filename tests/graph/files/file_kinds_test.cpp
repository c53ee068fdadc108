#include "graph/files/file_kinds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <cctype>
#include <set>

#include "base/error.h"
#include "graph/files/graph_file.h"
#include "graph/files/import_into_graph.h"
#include "graph/xy_graph.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::vector<std::string_view> Texts(const std::vector<FileFilter>& filters) {
  std::vector<std::string_view> texts;
  texts.reserve(filters.size());
  for (const FileFilter& filter : filters) texts.push_back(filter.text);
  return texts;
}

TEST(FileKinds, DialogsListTheOldFiltersFirstAndEveryWrittenKindOnce) {
  EXPECT_THAT(Texts(OpenFilters()),
              ElementsAre("Tarnwick Graphs  (*.tgr)", "Tarnwick Templates  (*.ttp)",
                          "Data Files (*.dat;*.txt)", "All Files (*.*)"));
  std::vector<std::string_view> save = Texts(SaveFilters());
  ASSERT_GT(save.size(), 8U);
  const std::set<std::string_view> different(save.begin(), save.end());
  EXPECT_EQ(different.size(), save.size());
  save.resize(8);
  EXPECT_THAT(save, ElementsAre("Tarnwick Graph File  (*.tgr)", "Tarnwick Graph Template (*.ttp)",
                                "Tarnwick DataSet File (*.tds)", "Data File  (*.dat)",
                                "Windows Metafile (*.wmf)", "Bitmap (*.bmp)", "JPEG Image (*jpg)",
                                "All Files (*.*)"));
  for (const FileKind& kind : FileKinds()) {
    const bool listed = !kind.save_filter.empty();
    const auto same_writer = [&](const FileKind& other) {
      return other.write == kind.write && !other.save_filter.empty();
    };
    EXPECT_TRUE(!kind.write || std::ranges::any_of(FileKinds(), same_writer)) << kind.ending;
    EXPECT_TRUE(!listed || kind.write || kind.ending.empty()) << kind.ending;
    EXPECT_TRUE(!kind.write || kind.needs == FileNeeds::Size || !kind.meaning.empty())
        << kind.ending;
  }
}

TEST(FileKinds, EndingsAreFoundInAnyCaseAndMeanOneKindEach) {
  for (const FileKind& kind : FileKinds()) {
    std::string name = "run.5/A" + std::string(kind.ending);
    EXPECT_EQ(&KindOf(name), &kind) << name;
    std::ranges::transform(name, name.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    EXPECT_EQ(&KindOf(name), &kind) << name;
    EXPECT_EQ(&KindToRead(name), kind.reads ? &kind : &KindOf("")) << name;
  }
  for (const char* packed : {"d/run.csv.gz", "run.txt.XZ", "run.zst", "run"}) {
    EXPECT_EQ(NameOfData(packed), "run");
    EXPECT_EQ(KindToRead(packed).packed, std::string_view(packed) != "run");
  }
  for (const char* unknown : {"", "a", "a.tgrx", "a.tgr.bak", "a.5", ".tgr"}) {
    EXPECT_EQ(KindOf(unknown).write, nullptr) << unknown;
    EXPECT_EQ(KindToRead(unknown).holds, FileHolds::Table) << unknown;
  }
}

/// What a file of a kind holds once it is read again: DataSets, and points of the first.
struct ReadBack {
  std::size_t series = 0;
  int points = 0;
  bool operator==(const ReadBack&) const = default;
};

ReadBack ReadAs(const FileKind& kind, const std::filesystem::path& path) {
  TxyGraph imported;
  std::unique_ptr<TxyGraph> loaded;
  if (HoldsSections(kind)) {
    loaded = LoadGraph(path);
  } else {
    ImportIntoGraph(imported, path);
  }
  const TxyGraph& graph = loaded ? *loaded : imported;
  return {graph.SeriesCount(), graph.SeriesCount() > 0 ? graph.Series(0).PointCount() : 0};
}

TEST(FileKinds, EveryKindReadsWhatItWritesAndTellsAWrongFile) {
  TxyGraph graph;
  for (const char* name : {"one", "two"}) {
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName(name);
    series->AddPoints(std::vector{1.0, 2.0, 3.0}, std::vector{1.5, 2.5, 0.5});
    graph.AddSeries(std::move(series));
  }
  const testing::TemporaryFolder folder;
  for (const FileKind& kind : FileKinds()) {
    if (!kind.write) continue;
    const std::filesystem::path path = folder.File("a" + std::string(kind.ending));
    kind.write(path, {.graph = graph, .series = 1, .picture = {300, 200}});
    EXPECT_GT(std::filesystem::file_size(path), 20U) << path;
    if (!kind.reads) continue;
    const ReadBack expected = kind.holds == FileHolds::Template  ? ReadBack{2, 0}
                              : kind.holds == FileHolds::DataSet ? ReadBack{1, 3}
                                                                 : ReadBack{2, 3};
    EXPECT_EQ(ReadAs(kind, path), expected) << path;
    const auto wrong = folder.Write("wrong" + std::string(kind.ending), std::string(9, '\0'));
    EXPECT_THROW(ReadAs(kind, wrong), FileError) << path;
  }
  EXPECT_THROW(KindOf("a.tds").write(folder.File("b.tds"), {.graph = graph, .series = 2}), Error);
  EXPECT_FALSE(std::filesystem::exists(folder.File("b.tds")));
}

TEST(FileKinds, WhatIsNoPictureIsToldWithTheEndingsThatAre) {
  const TxyGraph graph;
  const testing::TemporaryFolder folder;
  for (const char* name : {"a.tiff", "a.tgr", "a"}) {
    try {
      WritePicture(graph, folder.File(name));
      ADD_FAILURE() << name;
    } catch (const Error& error) {
      EXPECT_THAT(error.what(), HasSubstr(std::filesystem::path(name).extension().string() +
                                          "\"; .wmf, .bmp, .jpg, .png, .gif, .svg and .pdf do"));
    }
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
}  // namespace tarnwick
