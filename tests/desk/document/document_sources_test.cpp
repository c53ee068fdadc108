// DataSets of documents and the sources they came from.
#include <gtest/gtest.h>

#include <string>

#include "desk/document/document.h"
#include "desk/document/refresh_documents.h"
#include "document/immediate_work.h"
#include "graph/files/graph_file.h"
#include "graph/files/import_into_graph.h"
#include "support/scripted_prompt.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

constexpr int kRows = 30'001;
constexpr int kEverySeventh = 4286;  // 30001 / 5000 + 1 = 7

std::string Table() {
  std::string text = "x,y\n";
  for (int i = 1; i <= kRows; ++i) text += std::to_string(i) + ",1\n";
  return text;
}

std::string TooMany(const std::string& name) {
  return "Maximum number of plotted points = 30000  was exceeded for dataSet \"" + name +
         "\".\nTo fix, change Hit Frequency to the automatic mode?";
}

class DocumentSources : public ::testing::Test {
 protected:
  /// A graph file with every row of the table in the whole, in an inserted graph, and in one inserted into that.
  std::filesystem::path SaveNested() {
    const auto table = folder_.Write("table.csv", Table());
    TxyGraph whole;
    TxyGraph* graph = &whole;
    for (const char* name : {"whole", "inserted", "innermost"}) {
      if (name != std::string("whole")) graph = &graph->AddChild();
      ImportOptions options;
      options.every = 1;
      ImportIntoGraph(*graph, table, options);
      graph->Series(0).SetSeriesName(name);
    }
    SaveGraph(whole, folder_.File("nested.tgr"));
    return folder_.File("nested.tgr");
  }
  /// Points of the whole's DataSet, the inserted one's and the innermost one's.
  std::vector<int> Points() {
    std::vector<int> points;
    for (const TxyGraph* graph = &document_.WholeGraph();;
         graph = graph->Children().front().get()) {
      points.push_back(graph->Series(0).PointCount());
      if (graph->Children().empty()) return points;
    }
  }

  testing::TemporaryFolder folder_;
  testing::ScriptedPrompt prompt_;
  testing::ImmediateWork work_;
  Document document_{"Graph_1", work_, prompt_};
};

TEST_F(DocumentSources, YesToAllReachesInsertedGraphsAndTheyAreReadAgain) {
  prompt_.Expect(TooMany("whole"), Answer::YesToAll);
  document_.Files().LoadGraphFile(SaveNested());
  EXPECT_EQ(Points(), (std::vector{kEverySeventh, kEverySeventh, kEverySeventh}));
}

TEST_F(DocumentSources, EachDataSetIsThinnedAsAnswered) {
  prompt_.Expect(TooMany("whole"), Answer::No);
  prompt_.Expect(TooMany("inserted"), Answer::Yes);
  prompt_.Expect(TooMany("innermost"), Answer::No);
  document_.Files().LoadGraphFile(SaveNested());
  EXPECT_EQ(Points(), (std::vector{kRows, kEverySeventh, kRows}));
}

TEST_F(DocumentSources, RefreshReadsInsertedGraphsOfEveryDepth) {
  for (int i = 0; i < 3; ++i)
    prompt_.Expect(TooMany(i == 0 ? "whole" : i == 1 ? "inserted" : "innermost"), Answer::No);
  document_.Files().LoadGraphFile(SaveNested());
  folder_.Write("table.csv", "x,y\n1,2\n3,4\n");
  EXPECT_TRUE(document_.Files().Refresh());
  EXPECT_EQ(Points(), (std::vector{2, 2, 2}));
  document_.History().Undo();
  EXPECT_EQ(Points(), (std::vector{kRows, kRows, kRows}));
}

TEST_F(DocumentSources, EditsAreToldBeforeRefreshingTakesThemBack) {
  document_.Files().ReadDataFile(folder_.Write("small.csv", "x,y\n1,2\n3,4\n"));
  Document* const all[] = {&document_};
  EXPECT_TRUE(MayReadAgain(all)) << "nothing is asked without an edit";
  document_.Edit("Add", [](TxyGraph& graph) { graph.Series(0).AddPoint(7, 1); });
  const std::string question =
      "Points of \"y\" were edited since they were read. Refreshing takes the edits back; Undo "
      "brings them again.\n\nRefresh all the same?";
  prompt_.Expect(question, Answer::No);
  RefreshDocuments(all);
  EXPECT_EQ(document_.Graph().Series(0).PointCount(), 3);
  prompt_.Expect(question, Answer::Yes);
  RefreshDocuments(all);
  EXPECT_EQ(document_.Graph().Series(0).PointCount(), 2);
}

TEST_F(DocumentSources, AGraphOfSomeRowsSaysSoFromOpeningOn) {
  const auto table = folder_.Write("table.csv", "x,y\n1,1\n2,4\n3,9\n4,16\n");
  ImportOptions second;
  second.every = 2;
  TxyGraph graph;
  ImportIntoGraph(graph, table, second);
  SaveGraph(graph, folder_.File("some.tgr"));
  const auto told = [&] { return document_.Told().Text(); };
  document_.Files().LoadGraphFile(folder_.File("some.tgr"));
  EXPECT_EQ(told(), "Every 2nd row is shown.");
  EXPECT_TRUE(document_.Files().Refresh());
  EXPECT_EQ(told(), "Every 2nd row is shown.");
  EXPECT_TRUE(document_.Files().LoadAllRows());
  EXPECT_EQ(told(), "");
}

TEST_F(DocumentSources, WhatIsToldOfReadingGoesBackAndForthWithTheSteps) {
  document_.Files().ReadDataFile(folder_.Write("gap.csv", "t,u,v\n1,10,1\n2,,2\n3,30,3\n4,40,4\n"));
  const std::string opened =
      "\"u\": 1 row skipped (Y empty; first at line 3); lines are broken at 1 gap.";
  EXPECT_EQ(document_.Told().Text(), opened);
  NewSource source{0, document_.Graph().Series(0).Source()};
  source.source.YColExpr = "2*Y";
  EXPECT_TRUE(document_.Files().ReadBy({source}));
  EXPECT_EQ(document_.Told().Text(), opened) << "of all DataSets, not of the one read again";
  source.source.AllRows = source.source.AutoRowHitFreq = false;
  source.source.RowSamplingFrequency = 3;
  EXPECT_TRUE(document_.Files().ReadBy({source}));
  EXPECT_EQ(document_.Told().Text(), "\"u\": every 3rd row is shown.");
  document_.History().Undo();
  EXPECT_EQ(document_.Told().Text(), opened);
  document_.History().Redo();
  EXPECT_EQ(document_.Told().Text(), "\"u\": every 3rd row is shown.");
}

TEST_F(DocumentSources, AMovedFolderIsStillReadAgain) {
  DocumentFiles& files = document_.Files();
  const auto write = [&](const char* folder, const std::string& table) {
    std::filesystem::create_directories(folder_.File(folder));
    return folder_.Write((std::string(folder) + "/table.csv").c_str(), table);
  };
  files.ReadDataFile(write("old/data", "x,y\n1,2\n"));
  files.SaveGraphFile(folder_.File("old/a.tgr"));
  std::filesystem::rename(folder_.File("old"), folder_.File("new"));
  const auto moved = write("new/data", "x,y\n1,2\n3,4\n");
  files.LoadGraphFile(folder_.File("new/a.tgr"));
  files.SaveGraphFile(folder_.File("new/data/b.tgr"));  // found again from there, too
  files.LoadGraphFile(folder_.File("new/data/b.tgr"));
  EXPECT_TRUE(files.Refresh());
  EXPECT_EQ(document_.Graph().Series(0).PointCount(), 2);
  EXPECT_EQ(document_.Graph().Series(0).Source().DatasourceInfo, moved);
  EXPECT_NE(document_.Told().Text().find("ead from " + moved.string()), std::string::npos);

  write("old/data", "x,y\n1,2\n3,4\n5,6\n");
  files.LoadGraphFile(folder_.File("new/a.tgr"));
  EXPECT_TRUE(files.Refresh());
  EXPECT_EQ(document_.Graph().Series(0).PointCount(), 2) << "graph and data were copied together";
}

TEST_F(DocumentSources, RunsAndRowsThatCameSinceAreRead) {
  const std::string runs = "x,y\n1,2\n2,4\n3,9\n\n1,3\n2,5\n3,9\n";
  const std::string table = "t U\n1 2\n2 4\n3 9\n4 2\n5 7\n";
  const std::string end = "\nEnd of measurement, operator Miller\nchecked 2 times\n";
  const struct {
    std::string opened, grown, told_opened, told_grown;
    int points, series;  // of the last DataSet, and how many there are
  } kCases[] = {
      {runs, runs + "\n1,4\n2,6\n",
       "The file holds 2 runs parted by empty lines or remarks, each is a DataSet of its own.",
       "The file holds 3 runs parted by empty lines or remarks, each is a DataSet of its own.", 2,
       3},
      {table + end, table + "6 8\n7 9\n" + end,
       "The lines from 8 on are no part of the table and left out.",
       "The lines from 10 on are no part of the table and left out.", 7, 1},
      {table + end, table + "6 8\n7 9\n",
       "The lines from 8 on are no part of the table and left out.", "", 7, 1},
  };
  for (const auto& row : kCases) {
    Document document("Graph_1", work_, prompt_);
    const auto path = folder_.Write("grown.csv", row.opened);
    document.Files().ReadDataFile(path);
    EXPECT_EQ(document.Told().Text(), row.told_opened);
    folder_.Write("grown.csv", row.grown);
    EXPECT_TRUE(document.Files().Refresh());
    ASSERT_EQ(document.Graph().SeriesCount(), static_cast<std::size_t>(row.series));
    const TSeries& last = document.Graph().Series(document.Graph().SeriesCount() - 1);
    EXPECT_EQ(last.PointCount(), row.points) << row.grown;
    EXPECT_EQ(document.Told().Text(), row.told_grown);
    EXPECT_EQ(last.SeriesName(), row.series > 1 ? "y, run 3" : "U");
  }
}

TEST_F(DocumentSources, ASourceWithoutItsColumnsIsToldAndThePointsStay) {
  document_.Files().ReadDataFile(folder_.Write("run.csv", "x,y\n1,2\n3,4\n"));
  document_.Files().ReadDataFile(folder_.Write("other.csv", "x,y\n1,2\n"));
  folder_.Write("run.csv", "a,b\n1,2\n3,4\n5,6\n");
  folder_.Write("other.csv", "x,y\n1,2\n3,4\n");
  Document* const all[] = {&document_};
  prompt_.ExpectTold("There is no column \"x\": " + folder_.File("run.csv").string() +
                     ", columns: a, b");
  RefreshDocuments(all);
  EXPECT_EQ(document_.Graph().Series(0).PointCount(), 2);
  EXPECT_EQ(document_.Graph().Series(1).PointCount(), 2) << "what can be read is";
  folder_.Write("run.csv", "x,y\n1,\n");
  prompt_.ExpectTold("No row gives a point any more, the points of before stay: " +
                     folder_.File("run.csv").string() +
                     ", 1 row skipped (Y empty; first at line 2)");
  RefreshDocuments(all);
  EXPECT_EQ(document_.Graph().Series(0).PointCount(), 2);
  folder_.Write("run.csv", "a,b\n1,2\n");
  NewSource source{0, document_.Graph().Series(0).Source()};
  EXPECT_THROW(document_.Files().ReadBy({source}), Error);
  EXPECT_EQ(document_.Graph().Series(0).PointCount(), 2);
}

TEST_F(DocumentSources, ClosingLosesWhatLiesInNoFile) {
  DocumentFiles& files = document_.Files();
  const auto table = folder_.Write("small.csv", "x,y\n1,2\n3,4\n5,6\n");
  double x = 7;
  const auto edit = [&] {
    document_.Edit("Add", [x](TxyGraph& graph) { graph.Series(0).AddPoint(x, 1); });
    ++x;
  };
  struct Row {
    const char* what;
    std::function<void()> change;
    bool loses;
  };
  const Row rows[] = {
      {"data make a change", [&] { files.ReadDataFile(table); }, true},
      {"template and source hold all", [&] { files.SaveGraphFile(folder_.File("a.ttp")); }, false},
      {"source gone", [&] { std::filesystem::remove(table); }, true},
      {"source back", [&] { folder_.Write("small.csv", "x,y\n1,2\n3,4\n5,6\n"); }, false},
      {"edited", edit, true},
      {"a template drops the edited points", [&] { files.SaveGraphFile(folder_.File("a.ttp")); },
       true},
      {"read again",
       [&] {
         files.Refresh();
         files.SaveGraphFile(folder_.File("a.ttp"));
       },
       false},
      {"undone",
       [&] {
         document_.History().Undo();
         document_.History().SetChanged(false);
       },
       true},
      {"graph file", [&] { files.SaveGraphFile(folder_.File("a.tgr")); }, false},
      {"edited after that", edit, true},
      {"its template", [&] { files.SaveGraphFile(folder_.File("a.ttp")); }, true},
      {"the graph file again", [&] { files.LoadGraphFile(folder_.File("a.tgr")); }, false},
      {"pasted",
       [&] {
         document_.Edit("Paste", [](TxyGraph& graph) {
           graph.AddSeries(std::make_unique<TSeries>()).AddPoint(1, 1);
         });
       },
       true},
      {"given up", [&] { files.GiveUp(); }, false},
  };
  for (const Row& row : rows) {
    row.change();
    EXPECT_EQ(files.ClosingLoses(), row.loses) << row.what;
  }
  files.LoadGraphFile(folder_.File("a.tgr"));
  files.LoadGraphFile(folder_.File("a.ttp"));
  EXPECT_TRUE(files.GraphFileName().empty()) << "saving the template's graph took a.tgr's place";
}

}  // namespace
}  // namespace tarnwick
