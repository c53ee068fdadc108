#include "app/fit/live_fit.h"

#include <gtest/gtest.h>

#include <QTest>
#include <fstream>

#include "desk/document/document.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

class LiveFitTest : public testing::DesktopTest {
 protected:
  TCurFit& Fit() { return ActiveDocument().Graph().Series(0).Fit(); }
  bool FollowsTo(double slope) {
    return QTest::qWaitFor(
        [&] { return !Fit().Modified() && std::abs(Fit().Param(1).Value() - slope) < 1e-6; },
        10'000);
  }
};

TEST_F(LiveFitTest, AResultThatIsShownFollowsTheRowsThatCome) {
  const auto file = folder_.Write("run.csv", "x,y\n1,1\n2,2\n3,3\n");
  Start({file});
  Document& document = ActiveDocument();
  document.Edit("Model", [](TxyGraph& graph) {
    TSeries& series = graph.Series(0);
    series.Source().Follow = true;
    FitSettings model;
    model.Expression = "a*x";
    model.ProcType = FitProcType::cfp_Newton;
    model.parameters.resize(1);
    model.parameters[0].Name = "a";
    model.parameters[0].Value = 0.5;
    model.parameters[0].Vary = true;
    series.Fit().SetSettings(model, MarkModified::Yes);
  });
  Run("FitCurve1");
  ASSERT_TRUE(FollowsTo(1));
  Run("dataStartLive1");
  Run("FitLive1");
  ASSERT_NE(LiveFit::Of(document), nullptr);
  std::ofstream(file, std::ios::app) << "100,200\n";
  EXPECT_TRUE(FollowsTo(20014.0 / 10014)) << Fit().Param(1).Value();
  Run("FitLive1");
  EXPECT_EQ(LiveFit::Of(document), nullptr);
  std::ofstream(file, std::ios::app) << "200,800\n";
  EXPECT_TRUE(QTest::qWaitFor([&] { return Fit().Modified(); }, 10'000));
  Run("dataStopLive1");
}

}  // namespace
}  // namespace tarnwick
