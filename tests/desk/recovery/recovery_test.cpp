// Copies of changed graphs: what is kept, what is found after the program was ended, at any moment.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QTest>
#include <atomic>
#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "base/error.h"
#include "desk/document/document.h"
#include "desk/recovery/left_graphs.h"
#include "desk/recovery/recovery_keeper.h"
#include "desk/recovery/recovery_store.h"
#include "document/immediate_work.h"
#include "graph/files/graph_file.h"
#include "support/scripted_prompt.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using namespace std::chrono_literals;
using Clock = std::filesystem::file_time_type::clock;

GraphState WithPoints(int count) {
  TxyGraph graph;
  TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
  for (int i = 1; i <= count; ++i) series.AddPoint(i, i);
  return graph.State();
}

class RecoveryTest : public ::testing::Test {
 protected:
  /// Names of the graphs that a start finds, "Graph_1 x.tgr".
  std::vector<std::string> Found() {
    std::vector<std::string> names;
    for (const LeftGraph& left : FindLeftGraphs(root_)) {
      names.push_back(left.note.name + (left.filed_later ? " outdated" : ""));
      if (!left.note.graph_file.empty())
        names.back() += ' ' + left.note.graph_file.filename().string();
    }
    return names;
  }
  bool Empty() const { return !std::filesystem::exists(root_) || std::filesystem::is_empty(root_); }
  static int PointsIn(const std::filesystem::path& copy) {
    return LoadGraph(copy)->Series(0).PointCount();
  }

  testing::TemporaryFolder folder_;
  std::filesystem::path root_ = folder_.File("recovery");
};

TEST_F(RecoveryTest, WhatAProgramLeftIsFoundOnceItRunsNoMore) {
  const auto before = Clock::now() - 1h;
  {
    RecoveryStore store(root_);
    store.Write(1, {{"Graph_1", folder_.File("line\nbreak \xFF.tgr")}, WithPoints(3), before});
    store.Write(2, {{"Graph_2", {}, "/a/run5.dat"}, WithPoints(4), Clock::now()});
    store.Write(3, {{"Graph_3"}, WithPoints(5), Clock::now()});
    store.Remove(3);
    EXPECT_EQ(Found(), std::vector<std::string>()) << "its program runs";
  }
  const std::vector<LeftGraph> left = FindLeftGraphs(root_);
  ASSERT_EQ(left.size(), 2U);
  EXPECT_EQ(left[0].note, (GraphNote{"Graph_1", folder_.File("line\nbreak \xFF.tgr")}));
  EXPECT_EQ(PointsIn(left[0].copy), 3);
  EXPECT_EQ(left[1].note, (GraphNote{"Graph_2", {}, "/a/run5.dat"}));
  EXPECT_EQ(Found(), std::vector<std::string>()) << "another start is asking";
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root_)) {
    struct stat status {};
    ASSERT_EQ(::stat(entry.path().c_str(), &status), 0);
    if (entry.path().filename() == "lock") continue;
    EXPECT_EQ(status.st_mode & 0777, entry.is_directory() ? 0700U : 0600U) << entry.path();
  }
}

TEST_F(RecoveryTest, ACopyTakenOverIsThereAtEveryMoment) {
  { RecoveryStore(root_).Write(1, {{"Graph_1"}, WithPoints(3), Clock::now()}); }
  {
    RecoveryStore next(root_);
    next.TakeOver(7, FindLeftGraphs(root_).at(0));
    EXPECT_EQ(Found(), std::vector<std::string>());
  }
  EXPECT_EQ(Found(), std::vector<std::string>{"Graph_1"});
  RemoveLeft(FindLeftGraphs(root_).at(0));
  EXPECT_TRUE(Found().empty() && Empty());
}

TEST_F(RecoveryTest, WhatIsNoCopyIsPassedOver) {
  { RecoveryStore(root_).Write(1, {{"Graph_1"}, WithPoints(3), Clock::now()}); }
  const auto own = std::filesystem::directory_iterator(root_)->path();
  const std::string copy = testing::ReadFile(own / "1.tgr");
  const std::string note = testing::ReadFile(own / "1.note");
  const auto saved = folder_.Write("saved.tgr", "later");
  std::filesystem::last_write_time(saved, Clock::now() + 1h);
  WriteNote(folder_.File("saved.note"), {"Graph_9", saved});
  struct Row {
    const char* what;
    const char* file;
    std::string bytes;
    std::vector<std::string> found;
  };
  const Row rows[] = {
      {"a copy", "1.tgr", copy, {"Graph_1"}},
      {"a copy killed before its note", "2.tgr", copy, {"Graph_1", "Graph_2"}},
      {"a cut note", "2.note", note.substr(0, note.size() - 1), {"Graph_1", "Graph_2"}},
      {"a note of huge counts",
       "2.note",
       note.substr(0, 4) + "\xFF\xFF\xFF\xF0",
       {"Graph_1", "Graph_2"}},
      {"a note without copy", "3.note", note, {"Graph_1", "Graph_2"}},
      {"an empty copy", "2.tgr", "", {"Graph_1"}},
      {"a half-written file", ".77-0.part", copy, {"Graph_1"}},
      {"a foreign graph", "run5.tgr", copy, {"Graph_1"}},
      {"a number with a sign", "-1.tgr", copy, {"Graph_1"}},
      {"a graph saved later",
       "1.note",
       testing::ReadFile(folder_.File("saved.note")),
       {"Graph_9 outdated saved.tgr"}},
      {"a graph saved as it is kept", "1.tgr", "later", {}},
  };
  for (const Row& row : rows) {
    testing::WriteFile(own / row.file, row.bytes);
    EXPECT_EQ(Found(), row.found) << row.what;
  }
  folder_.Write("recovery/stray", "no folder");
  EXPECT_EQ(Found(), std::vector<std::string>());
  EXPECT_TRUE(std::filesystem::exists(own / "run5.tgr")) << "what is not ours stays";
}

class KeeperTest : public RecoveryTest {
 protected:
  void AddPoint(Document& document) {
    document.Edit("Add", [](TxyGraph& graph) {
      if (graph.SeriesCount() == 0) graph.AddSeries(std::make_unique<TSeries>());
      TSeries& series = graph.Series(0);
      series.AddPoint(series.PointCount() + 1, 1);
    });
  }
  std::unique_ptr<Document> MakeDocument() {
    return std::make_unique<Document>("Graph_1", work_, prompt_);
  }
  /// Points in the copies that lie there now, while their program runs.
  std::vector<int> Kept() const {
    std::vector<int> kept;
    if (!std::filesystem::exists(root_)) return kept;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root_))
      if (NumberOfCopy(entry.path())) kept.push_back(PointsIn(entry.path()));
    return kept;
  }
  bool WaitFor(const std::vector<int>& kept) {
    return QTest::qWaitFor([&] {
      try {
        return Kept() == kept;
      } catch (const Error&) {
        return false;  // a copy was taken away while it was read
      }
    });
  }

  testing::ScriptedPrompt prompt_;
  testing::ImmediateWork work_;
};

TEST_F(KeeperTest, KeepsCopiesOfWhatClosingLoses) {
  auto document = MakeDocument();
  {
    RecoveryKeeper keeper(root_, 5ms);
    keeper.Follow(*document);
    QTest::qWait(20);
    EXPECT_TRUE(Empty()) << "nothing is changed";
    AddPoint(*document);
    EXPECT_TRUE(WaitFor({1}));
    AddPoint(*document);
    EXPECT_TRUE(WaitFor({2}));
    document->History().Undo();
    EXPECT_TRUE(WaitFor({1}));
    document->Files().SaveGraphFile(folder_.File("saved.tgr"));
    EXPECT_TRUE(WaitFor({})) << "saved";
    AddPoint(*document);
    EXPECT_TRUE(WaitFor({2}));
    document.reset();
    EXPECT_TRUE(WaitFor({})) << "closed";
    document = MakeDocument();
    keeper.Follow(*document);
    AddPoint(*document);
    EXPECT_TRUE(WaitFor({1}));
  }
  EXPECT_EQ(Found(), std::vector<std::string>{"Graph_1"}) << "the program ended before it closed";
}

TEST_F(KeeperTest, UntouchedDataLieInTheirFile) {
  const auto file = folder_.Write("run.csv", "x,y\n1,1\n2,2\n3,3\n");
  auto document = MakeDocument();
  RecoveryKeeper keeper(root_, 5ms);
  StartFiles files;
  files.data = file;
  document->Files().Begin(files);
  keeper.Follow(*document);
  QTest::qWait(50);
  EXPECT_TRUE(Empty());
  EXPECT_TRUE(document->Files().ClosingLoses()) << "the graph of them lies in no file";
  AddPoint(*document);
  EXPECT_TRUE(WaitFor({4}));
  document->History().Undo();
  EXPECT_TRUE(WaitFor({})) << "as it was opened";
  document->Graph().Series(0).AddPoint(9, 9);
  emit document->stateChanged();
  EXPECT_TRUE(WaitFor({4})) << "what came without a step lies nowhere";
}

TEST_F(KeeperTest, AFullDiskIsToldOnceAndOvercome) {
  folder_.Write("recovery", "no folder");
  auto document = MakeDocument();
  RecoveryKeeper keeper(root_, 5ms);
  QStringList told;
  QObject::connect(&keeper, &RecoveryKeeper::failed, [&](const QString& why) { told << why; });
  keeper.Follow(*document);
  AddPoint(*document);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }));
  AddPoint(*document);
  QTest::qWait(50);
  EXPECT_EQ(told.size(), 1) << told.join('\n').toStdString();
  std::filesystem::remove(root_);
  EXPECT_TRUE(WaitFor({2})) << "without another change";
}

/// A session that goes on until it is killed: a point after the other, `times` telling when (ns of the steady clock).
struct Session {
  static constexpr std::size_t kMostPoints = 1 << 16;
  std::atomic<std::size_t> points = 0;
  std::array<std::atomic<std::int64_t>, kMostPoints> times = {};
};

std::int64_t Now() {
  return std::chrono::steady_clock::now().time_since_epoch() / 1ns;
}

TEST_F(KeeperTest, KilledAtAnyMomentItLeavesAWholeRecentCopy) {
  constexpr int kBatches = 10;
  constexpr int kTogether = 20;
  constexpr std::chrono::milliseconds kInterval = 10ms;
  // Twenty sessions write at once, and other tests run beside.
  constexpr std::chrono::nanoseconds kMostLost = 3s;
  std::mt19937 random(11);
  const auto shared = [] {
    void* const memory =
        ::mmap(nullptr, sizeof(Session), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return new (memory) Session;
  };
  int found = 0;
  for (int batch = 0; batch < kBatches; ++batch) {
    std::vector<std::pair<pid_t, Session*>> sessions;
    for (int i = 0; i < kTogether; ++i) {
      Session& session = *shared();
      const auto root = folder_.File(std::to_string(batch) + '-' + std::to_string(i));
      const pid_t child = ::fork();
      if (child == 0) {
        RecoveryKeeper keeper(root, kInterval);
        Document document("Graph_1", work_, prompt_);
        keeper.Follow(document);
        while (session.points < Session::kMostPoints) {
          AddPoint(document);
          session.times[session.points] = Now();
          ++session.points;
          QCoreApplication::processEvents();
          std::this_thread::sleep_for(1ms);
        }
        ::raise(SIGKILL);
      }
      sessions.emplace_back(child, &session);
    }
    for (int i = 0; i < kTogether; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(random() % 40));
      const auto [child, session] = sessions[static_cast<std::size_t>(i)];
      ::kill(child, SIGKILL);
      const std::int64_t killed = Now();
      ASSERT_EQ(::waitpid(child, nullptr, 0), child);
      root_ = folder_.File(std::to_string(batch) + '-' + std::to_string(i));
      const std::vector<LeftGraph> left = FindLeftGraphs(root_);
      ASSERT_LE(left.size(), 1U);
      const auto kept = static_cast<std::size_t>(left.empty() ? 0 : PointsIn(left[0].copy));
      found += left.empty() ? 0 : 1;
      if (kept < session->points) {
        EXPECT_LT(killed - session->times[kept], kMostLost / 1ns) << kept << " points kept";
      }
      ::munmap(session, sizeof(Session));
    }
  }
  EXPECT_GT(found, kBatches * kTogether / 2);
}

}  // namespace
}  // namespace tarnwick
