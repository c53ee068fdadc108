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

TEST_F(FollowedFile, CutShortOrWrittenAnewBeginsAnew) {
  StreamWatcher watcher(info);
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitForPoints(2));
  const std::int32_t last_id = watcher.series.LastId();
  std::filesystem::resize_file(file, 0);
  ASSERT_TRUE(watcher.WaitForPoints(0));
  Append(file, "x,y\n7,7\n");
  ASSERT_TRUE(watcher.WaitForPoints(1));
  EXPECT_GT(watcher.series.Points().At(0).id, last_id) << "ids that steps of before know";
  EXPECT_THAT(watcher.stream->Told(), ::testing::HasSubstr("cut short"));
  WriteFile(file, "x,y\n1,1\n2,2\n3,3\n4,4\n");
  EXPECT_TRUE(watcher.Wait([&] { return watcher.Points() == "1:1 2:2 3:3 4:4"; }));
}

TEST_F(FollowedFile, AFileThatIsWrittenAnewLongerThanBeforeBeginsAnew) {
  std::string alike;
  for (int i = 0; i < 3000; ++i) alike += "0,0\n";
  WriteFile(file, "x,y\n1,5\n" + alike);
  StreamWatcher watcher(info);
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitForPoints(3001));
  WriteFile(file, "x,y\n1,6\n" + alike + "2,7\n");
  EXPECT_TRUE(watcher.WaitForPoints(3002));
  EXPECT_THAT(watcher.Points(), ::testing::EndsWith(" 0:0 1:6 2:7"));
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
}

TEST_F(FollowedFile, WaitsWhilePausedAndStopsForGood) {
  StreamWatcher watcher(info);
  watcher.stream->Start();
  ASSERT_TRUE(watcher.WaitForPoints(2));
  watcher.stream->Pause();
  EXPECT_EQ(watcher.stream->State(), StreamState::Paused);
  EXPECT_EQ(watcher.stream->Told(), "Paused");
  Append(file, "2,2\n");
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
