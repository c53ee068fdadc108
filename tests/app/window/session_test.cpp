// What one session leaves for the next: its windows, and pictures of its graphs on the start page.
#include <QMdiArea>
#include <QPushButton>
#include <QTest>
#include <algorithm>

#include "app/window/recent_pictures.h"
#include "app/window/recent_tile.h"
#include "app/window/window_session.h"
#include "desk/commands/command_actions.h"
#include "desk/settings/settings.h"
#include "desk/widgets/text.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

class SessionTest : public testing::DesktopTest {
 protected:
  ProgramPaths Paths() override {
    ProgramPaths paths = DesktopTest::Paths();
    paths.pictures = pictures_;
    return paths;
  }
  void StartAgain(const std::vector<std::filesystem::path>& files = {}) {
    TearDown();
    SetUp();
    Start(files);
  }
  QStringList Shown() const {
    QStringList files;
    for (const TGraphWindow* window : form_->GraphWindows())
      files += PathText(SessionFileOf(window->GetDocument()).filename());
    return files;
  }
  std::vector<RecentTile*> Tiles() const {
    const QList<RecentTile*> tiles = form_->findChildren<RecentTile*>();
    return {tiles.begin(), tiles.end()};
  }

  std::filesystem::path pictures_ = folder_.File("pictures");
  std::filesystem::path saved_ = folder_.File("saved.tgr");
};

TEST_F(SessionTest, WindowsComeBackOnRequestWhereTheyWere) {
  Start({Example("decay.dat")});
  chooser_->to_save = {saved_};
  Run("FileSaveAs1");
  Run("FileNew1");  // holds nothing that could be opened again
  chooser_->to_open = {Example("pendulum.csv"), Example("diode.txt")};
  Run("FileOpen1");
  const std::vector<TGraphWindow*> windows = form_->GraphWindows();
  windows[3]->showMinimized();
  windows[2]->showNormal();
  windows[2]->setGeometry(20, 30, 400, 300);
  form_->ActiveGraphWindow()->mdiArea()->setActiveSubWindow(windows[2]);
  for (const char* name : {"Graph_3", "Graph_4"})
    Expect(std::string("Save changes to ") + name + " ?", Answer::No);
  form_->close();

  StartAgain();
  EXPECT_TRUE(form_->GraphWindows().empty()) << "only on request";
  form_->close();
  StartAgain();  // one that opened nothing is no session
  EXPECT_EQ(form_->findChild<QPushButton*>("ReopenSession")->text(), "&Reopen 3 Windows");
  Run("WindowReopen1");
  EXPECT_EQ(Shown(), (QStringList{"saved.tgr", "pendulum.csv", "diode.txt"}));
  EXPECT_EQ(form_->GraphWindows()[1]->geometry(), QRect(20, 30, 400, 300));
  EXPECT_TRUE(form_->GraphWindows()[2]->isMinimized());
  EXPECT_EQ(form_->ActiveGraphWindow(), form_->GraphWindows()[1]);
  EXPECT_FALSE(form_->Actions().ActionOf("WindowReopen1")->isEnabled()) << "all are open";

  Run("WindowReopenAtStart1");
  std::filesystem::remove(saved_);
  StartAgain({Example("diode.txt")});
  EXPECT_EQ(Shown(), (QStringList{"diode.txt", "pendulum.csv"})) << "none twice";
  EXPECT_EQ(form_->ActiveGraphWindow(), form_->GraphWindows()[0]) << "what was asked for";
  EXPECT_EQ(TakeTold(), std::vector<std::string>{"1 file could not be opened:\n\nFile \"" +
                                                 saved_.string() + "\" is not found!"});
}

TEST_F(SessionTest, NonsenseInTheStoreOpensNothing) {
  const QString file = QString::fromStdString(folder_.File("other.ini").string());
  QSettings store(file, QSettings::IniFormat);
  store.setValue("Tarnwick/Session", QStringList{"", "1", "1 0 1 1 1 1 ", "1 9 1 1 1 1 /a",
                                                 "x 0 1 1 1 1 /a", "0 2 -5 1 1 1 /a b"});
  store.sync();
  const Settings settings(std::make_unique<QSettings>(file, QSettings::IniFormat));
  const std::vector<SessionWindow> kept = KeptSession(settings);
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(kept[0].file, "/a b");
  EXPECT_EQ(kept[0].shown, WindowShown::Maximised);
}

TEST_F(SessionTest, TheStartPageShowsRecentGraphsAndWhichAreMissing) {
  Start({Example("decay.dat")});
  chooser_->to_save = {saved_};
  Run("FileSaveAs1");
  Run("FileClose1");
  const auto picture = [&] { return Tiles().at(0)->icon().pixmap(120, 81).toImage(); };
  const QImage without = picture();
  ASSERT_EQ(Tiles().at(0)->toolTip(), PathText(saved_));
  EXPECT_TRUE(QTest::qWaitFor([&] { return picture() != without; })) << "made when it was closed";
  const QImage with = picture();
  StartAgain();
  EXPECT_TRUE(QTest::qWaitFor([&] { return picture() == with; })) << "kept between runs";
  std::filesystem::remove(saved_);
  StartAgain();
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return Tiles().at(0)->toolTip() == PathText(saved_) + " is not found"; }));
}

TEST_F(SessionTest, PicturesStayFewAndForTheUserAlone) {
  RecentPictures pictures(pictures_);
  int found = 0;
  QObject::connect(&pictures, &RecentPictures::pictureFound, [&] { ++found; });
  for (int i = 0; i < RecentPictures::kMostKept + 3; ++i)
    pictures.Make("/data/" + std::to_string(i), {});
  ASSERT_TRUE(QTest::qWaitFor([&] { return found == RecentPictures::kMostKept + 3; }, 20'000));
  const std::filesystem::directory_iterator kept(pictures_);
  EXPECT_EQ(std::distance(begin(kept), end(kept)), RecentPictures::kMostKept);
  EXPECT_EQ(std::filesystem::status(pictures_).permissions(), std::filesystem::perms::owner_all);
}

}  // namespace
}  // namespace tarnwick
