#include "app/window/recent_files.h"

#include <gtest/gtest.h>

#include "desk/settings/settings.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

class RecentFilesTest : public ::testing::Test {
 protected:
  testing::TemporaryFolder folder_;
  std::unique_ptr<QSettings> Store() const {
    return std::make_unique<QSettings>(
        QString::fromStdString(folder_.File("settings.ini").string()), QSettings::IniFormat);
  }
  Settings settings_{Store()};
};

TEST_F(RecentFilesTest, ATenthFileDropsTheOldestAndAListedOneMovesUp) {
  {
    RecentFiles recent(settings_);
    for (int i = 0; i <= 9; ++i) recent.Add("/data/" + std::to_string(i));
    recent.Add("/data/4");
  }
  const RecentFiles read(settings_);
  const QStringList expected = {"/data/4", "/data/9", "/data/8", "/data/7", "/data/6",
                                "/data/5", "/data/3", "/data/2", "/data/1"};
  EXPECT_EQ(QStringList(read.Entries().begin(), read.Entries().end()), expected);
}

TEST_F(RecentFilesTest, ANameStoredTwiceCountsOnce) {
  const auto store = Store();
  store->setValue("Tarnwick/File1", "/a");
  store->setValue("Tarnwick/File2", "/a");
  store->setValue("Tarnwick/File3", "/b");
  const RecentFiles recent(settings_);
  EXPECT_EQ(recent.Entries()[0], "/a");
  EXPECT_EQ(recent.Entries()[1], "/b");
  EXPECT_EQ(recent.Entries()[8], "");
}

}  // namespace
}  // namespace tarnwick
