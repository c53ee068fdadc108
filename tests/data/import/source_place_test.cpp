#include "data/import/source_place.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

TDSInfo TextFile(const std::string& named) {
  TDSInfo info;
  info.DataSource = DataSourceKind::Text;
  info.DatasourceInfo = named;
  return info;
}

TDSInfo Database(const std::string& named) {
  TDSInfo info = TextFile(named);
  info.DataSource = DataSourceKind::Database;
  return info;
}

TEST(SourcePlace, IsToldFromTheFoldersInCommon) {
  struct Row {
    const char* folder;
    const char* named;
    const char* told;
  };
  const Row rows[] = {
      {"/home/a/graphs", "/home/a/graphs/x.dat", "x.dat"},
      {"/home/a/graphs", "/home/a/data/b/x.dat", "../data/b/x.dat"},
      {"/home/a", "/mnt/x.dat", ""},
      {"", "/home/a/x.dat", ""},
      {"/home/a", "C:\\data\\x.dat", ""},
  };
  for (const Row& row : rows)
    EXPECT_EQ(RelativeSourceIn(row.folder, TextFile(row.named)), row.told) << row.named;
  EXPECT_EQ(RelativeSourceIn("/home/a", TDSInfo()), "") << "points of one's own";
  EXPECT_EQ(RelativeSourceIn("/home/a", Database("sqlite:/home/a/50%25%3F/r.db?table=t")),
            "50%?/r.db");
  EXPECT_EQ(RelativeSourceIn("/home/a", Database("postgresql://host/home/a")), "");
}

TEST(SourcePlace, IsTheToldOneWhereAFileOfThatNameIsThere) {
  const testing::TemporaryFolder folder;
  const std::string here = folder.Write("x.dat", "1 2\n").string();
  std::filesystem::create_directories(folder.File("old"));
  const std::string original = folder.Write("old/x.dat", "3 4\n").string();
  const std::string gone = folder.File("gone/x.dat").string();
  struct Row {
    std::string named;
    std::string told;
    std::string place;
  };
  const Row rows[] = {{gone, "x.dat", here},
                      {gone, "", gone},
                      {gone, here, gone},
                      {gone, "none/x.dat", gone},
                      {here, "none/x.dat", here},
                      {original, "x.dat", here},
                      {original, "", original},
                      {folder.File("y.dat").string(), "x.dat", folder.File("y.dat").string()}};
  for (const Row& row : rows) {
    TDSInfo info = TextFile(row.named);
    info.RelativeSource = row.told;
    info.GraphFolder = folder.Path().string();
    EXPECT_EQ(SourcePlace(info), row.place) << row.named << ", " << row.told;
  }
}

TEST(SourcePlace, OfADataBaseItsFileIsLookedFor) {
  const testing::TemporaryFolder folder;
  const std::string here = folder.Write("r.db", "").string();
  TDSInfo info = Database("sqlite:/gone/r.db?query=SELECT a%3F");
  info.RelativeSource = "r.db";
  info.GraphFolder = folder.Path().string();
  EXPECT_EQ(PlacedSource(info), "sqlite:" + here + "?query=SELECT a%3F");
  EXPECT_EQ(SourcePlace(info), here);
  info.DatasourceInfo = "postgresql://host/r.db?table=t";
  EXPECT_EQ(PlacedSource(info), info.DatasourceInfo);
}

}  // namespace
}  // namespace tarnwick
