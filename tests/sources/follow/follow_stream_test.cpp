#include "sources/follow/follow_stream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "stream_watcher.h"
#include "support/refusal.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Refusal;
using testing::StreamWatcher;
using testing::TemporaryFolder;
using testing::WriteFile;

void Append(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::app | std::ios::binary) << bytes;
}

class FollowedFile : public ::testing::Test {
 protected:
  FollowedFile() {
    info.DataSource = DataSourceKind::Text;
    info.DatasourceInfo = file.string();
    info.FileHasHeaders = 1;
    info.XDataColumn = "x";
    info.YDataColumn = "y";
    info.Follow = true;
  }

  TemporaryFolder folder;
  std::filesystem::path file = folder.Write("run.csv", "x,y\n0,0\n1,1\n");
  TDSInfo info;
};

TEST_F(FollowedFile, IsReadFromItsFirstRowOnAsTheDescriptionSays) {
  struct Row {
    const char* name;
    void (*describe)(TDSInfo& info);
    const char* text;
    const char* more;
    const char* points;
    int unreadable = 0;
  };
  const Row rows[] = {
      {"headers and new rows", [](TDSInfo&) {}, "x,y\n0,5\n", "1,6\n2,7\n", "0:5 1:6 2:7"},
      {"columns by name", [](TDSInfo& i) { i.YDataColumn = "z"; }, "x,y,z\n0,5,8\n", "1,6,9\n",
       "0:8 1:9"},
      {"a header alone waits for rows", [](TDSInfo&) {}, "x,y\n", "3,4\n", "3:4"},
      {"an unended line waits", [](TDSInfo&) {}, "x,y\n0,5\n1,", "6\n2,", "0:5 1:6"},
      {"column expressions", [](TDSInfo& i) { i.YColExpr = "2*y + x"; }, "x,y\n1,5\n", "2,6\n",
       "1:11 2:14"},
      {"missing values and comments are no points", [](TDSInfo& i) { i.MissingValues = "-9999"; },
       "x,y\n0,-9999\n", "# note\n1,6\nwhat,7\n", "1:6", 2},
      {"row numbers go on", [](TDSInfo& i) { i.XDataColumn = "Row number"; }, "x,y\n9,5\n9,6\n",
       "9,7\n", "1:5 2:6 3:7"},
      {"blank lines part pieces", [](TDSInfo&) {}, "x,y\n0,5\n1,6\n", "\n2,7\n3,8\n",
       "0:5 1:6 | 2:7 3:8"},
      {"rows are chosen",
       [](TDSInfo& i) {
         i.RowChoiceMode = RowChoice::BetweenX;
         i.RowChoiceValue1 = 1;
         i.RowChoiceValue2 = 3;
       },
       "x,y\n0,5\n1,6\n", "3,8\n4,9\n", "1:6 3:8"},
      {"sampling is off", [](TDSInfo& i) { i.AutoRowHitFreq = false, i.RowSamplingFrequency = 3; },
       "x,y\n0,5\n1,6\n", "2,7\n", "0:5 1:6 2:7"},
      {"the last points are kept", [](TDSInfo& i) { i.KeepPoints = 2; }, "x,y\n0,5\n1,6\n", "2,7\n",
       "1:6 2:7"},
      {"bytes of no text are passed over", [](TDSInfo&) {}, "x,y\n0,5\n", "\x01\x02,\xff\n3,8\n",
       "0:5 3:8", 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    TDSInfo described = info;
    row.describe(described);
    WriteFile(file, row.text);
    StreamWatcher watcher(described);
    watcher.stream->Start();
    EXPECT_TRUE(watcher.Wait([&] { return watcher.begun > 0 && !watcher.stream->Told().empty(); }));
    Append(file, row.more);
    EXPECT_TRUE(watcher.Wait([&] { return watcher.Points() == row.points; }))
        << watcher.Points() << ' ' << watcher.stream->Told();
    EXPECT_EQ(watcher.unreadable, row.unreadable);
  }
}

TEST_F(FollowedFile, BringsErrorsAlong) {
  WriteFile(file, "x,y,dy\n0,5,0.5\n");
  info.YErrorColumn = "dy";
  StreamWatcher watcher(info);
  watcher.series.SetErrors({.y = {ErrorKind::Column, 0}, .x = {}, .y_values = {}, .x_values = {}});
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitForPoints(1));
  EXPECT_EQ(YErrorAt(watcher.series, watcher.series.Points().At(0)), 0.5);
}

TEST_F(FollowedFile, KeepsThePointsOfAFileThatIsCutShortOrWrittenAnew) {
  struct Row {
    const char* name;
    std::size_t cut_to;  // bytes of "x,y\n0,0\n1,1\n2,2\n"
    const char* more;
    const char* points;
    const char* told;
  };
  const Row rows[] = {
      {"emptied", 0, "x,y\n7,7\n", "0:0 1:1 2:2 | 7:7", "its new rows are added"},
      {"cut to a prefix", 8, "3,3\n", "0:0 1:1 2:2 | 3:3",
       "begins with 1 line that it had before, not added again"},
      {"cut within a line", 10, "5\n3,3\n", "0:0 | 1:5 | 1:1 2:2 | 3:3", "begins with 1 line that"},
      {"written anew with a row more", 0, "x,y\n0,0\n1,1\n2,2\n3,3\n", "0:0 1:1 2:2 3:3",
       "Following run.csv"},
      {"other columns", 0, "y,x\n4,9\n5,10\n", "0:0 1:1 2:2 | 9:4 10:5", "its new rows are added"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    WriteFile(file, "x,y\n0,0\n1,1\n2,2\n");
    StreamWatcher watcher(info);
    watcher.stream->Start();
    ASSERT_TRUE(watcher.WaitForPoints(3));
    std::filesystem::resize_file(file, row.cut_to);
    EXPECT_TRUE(watcher.Wait([&] {
      return watcher.stream->Told().ends_with("what came before stays, and its new rows are added");
    })) << watcher.stream->Told();
    Append(file, row.more);
    EXPECT_TRUE(watcher.Wait([&] { return watcher.Points() == row.points; })) << watcher.Points();
    EXPECT_THAT(watcher.stream->Told(), ::testing::HasSubstr(row.told));
    EXPECT_EQ(watcher.begun, 1);
  }
}

TEST_F(FollowedFile, NoticesAFileThatIsWrittenAnewLongerThanBefore) {
  std::string alike;
  for (int i = 0; i < 3000; ++i) alike += "0,0\n";
  WriteFile(file, "x,y\n1,5\n" + alike);
  StreamWatcher watcher(info);
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitForPoints(3001));
  WriteFile(file, "x,y\n1,6\n" + alike + "2,7\n");
  EXPECT_TRUE(watcher.WaitForPoints(3001 + 3002));
  EXPECT_THAT(watcher.Points(), ::testing::EndsWith(" 1:5 | 1:6 2:7"));
}

TEST_F(FollowedFile, GoesOnWithTheFileThatTakesItsPlace) {
  StreamWatcher watcher(info);
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitForPoints(2));
  Append(file, "2,2\n3,3");  // its last line has no end
  std::filesystem::rename(file, folder.File("run.1.csv"));
  ASSERT_TRUE(watcher.WaitFor(StreamState::Away)) << watcher.stream->Told();
  folder.Write("run.csv", "y,x\n4,40\n");
  ASSERT_TRUE(watcher.WaitForPoints(5)) << watcher.Points();
  EXPECT_EQ(watcher.Points(), "0:0 1:1 2:2 3:3 | 40:4");
  EXPECT_EQ(watcher.begun, 1);
  std::filesystem::rename(folder.Write("written.csv", "y,x\n4,40\n5,50\n"), file);
  EXPECT_TRUE(watcher.Wait([&] { return watcher.Points().ends_with("| 40:4 50:5"); }))
      << "rows that both files have are there once";
}

TEST_F(FollowedFile, WaitsWhilePausedAndStopsForGood) {
  StreamWatcher watcher(info);
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitForPoints(2));
  watcher.stream->Pause();
  EXPECT_EQ(watcher.stream->State(), StreamState::Paused);
  EXPECT_EQ(watcher.stream->Told(), "Paused");
  Append(file, "2,2\n");
  std::this_thread::sleep_for(std::chrono::milliseconds(250));
  watcher.TakeRows();
  EXPECT_EQ(watcher.series.PointCount(), 2) << "nothing is read before it goes on";
  watcher.stream->Start();
  EXPECT_TRUE(watcher.WaitForPoints(3));
  watcher.stream->Stop();
  EXPECT_EQ(watcher.stream->State(), StreamState::Stopped);
  Append(file, "3,3\n");
  watcher.stream->Start();
  EXPECT_TRUE(watcher.WaitForPoints(4)) << "begins again from the first row";
  EXPECT_EQ(watcher.begun, 2);
}

TEST_F(FollowedFile, LosesNothingOfAFlood) {
  constexpr int kRows = 200'000;
  StreamWatcher watcher(info);
  watcher.stream->Start();
  std::ofstream out(file, std::ios::app);
  for (int i = 2; i < kRows; ++i) out << i << ',' << i << '\n';
  out.flush();
  EXPECT_TRUE(watcher.WaitForPoints(kRows)) << watcher.series.PointCount();
  EXPECT_EQ(watcher.lost, 0);
}

TEST_F(FollowedFile, SaysWhatCannotBeFollowed) {
  struct Row {
    const char* name;
    std::string bytes;
    const char* column;
    const char* told;
  };
  const Row rows[] = {
      {"no such column", "x,y\n0,0\n", "z", "There is no column \"z\""},
      {"wide characters", std::string("\xFF\xFEx\0", 4), "y", "UTF-16 cannot be followed"},
      {"packed", "\x1f\x8b\x08rest of it", "y", "A packed file cannot be followed"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    WriteFile(file, row.bytes);
    info.YDataColumn = row.column;
    StreamWatcher watcher(info);
    watcher.stream->Start();
    EXPECT_TRUE(watcher.WaitFor(StreamState::Failed));
    EXPECT_THAT(watcher.stream->Told(), ::testing::HasSubstr(row.told));
  }
  info.TableLines = 5;
  EXPECT_THAT(Refusal([&] { StreamWatcher refused(info); }), ::testing::HasSubstr("after 5 lines"));
}

}  // namespace
}  // namespace tarnwick
