// The bar over a graph whose data come by themselves, used as a user does.
#include <QTest>
#include <QToolButton>
#include <fstream>

#include "app/window/live_bar.h"
#include "desk/document/document.h"
#include "desk/widgets/text_lines.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

class LiveBarTest : public testing::DesktopTest {
 protected:
  void Click(const char* name) {
    QTest::mouseClick(Bar().findChild<QToolButton*>(name), Qt::LeftButton);
  }
  LiveBar& Bar() { return *form_->findChild<LiveBar*>(); }
  bool WaitForText(const QString& text) {
    const auto* const shown = Bar().findChild<TextLines*>("LiveText");
    return QTest::qWaitFor([&] { return shown->Text() == text; }, 10'000);
  }
};

TEST_F(LiveBarTest, StartsPausesAndStopsAFileThatGrows) {
  const auto file = folder_.Write("run.csv", "x,y\n1,1\n2,2\n3,3\n");
  Start({file});
  EXPECT_FALSE(Bar().isVisible());
  TDSInfo source = ActiveDocument().Graph().Series(0).Source();
  source.Follow = true;
  ActiveDocument().Files().ReadBy({{0, source}});
  EXPECT_TRUE(Bar().isVisible());
  EXPECT_TRUE(WaitForText("Following run.csv, 3 rows came."));
  std::ofstream(file, std::ios::app) << "4,9\n";
  EXPECT_TRUE(WaitForText("Following run.csv, 4 rows came."));
  EXPECT_GE(ActiveDocument().Graph().Axis(AxisId::Y).Max(), 9) << "the scale follows";
  Click("PauseLive");
  std::ofstream(file, std::ios::app) << "5,5\n";
  Run("dataStartLive1");
  EXPECT_TRUE(WaitForText("Following run.csv, 5 rows came."));
  Click("StopLive");
  EXPECT_TRUE(WaitForText("Stopped, 5 rows came."));
  source.Follow = false;
  ActiveDocument().Files().ReadBy({{0, source}});
  EXPECT_FALSE(Bar().isVisible());
  ActiveDocument().Files().GiveUp();
}

}  // namespace
}  // namespace tarnwick
