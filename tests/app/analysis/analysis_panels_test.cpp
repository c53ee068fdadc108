// The panels that answer at once: values at an X, and the table of peaks.
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "desktop_fixture.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

class AnalysisPanels : public DesktopTest {
 protected:
  void SetUp() override {
    DesktopTest::SetUp();
    Start({Example("decay.dat")});
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName("Spectrum");
    for (int x = 0; x < 300; ++x) {
      series->AddPoint(x, 1 + 50 * std::exp(-std::pow((x - 100) / 9.0, 2)) +
                              30 * std::exp(-std::pow((x - 200) / 12.0, 2)) + 0.01 * (x % 2));
    }
    Graph().AddSeries(std::move(series));
    Graph().SetCurrentSeriesIndex(1);
  }
  TxyGraph& Graph() { return ActiveDocument().Graph(); }
  template <class Widget>
  Widget& Find(const char* name) {
    return *form_->findChild<Widget*>(name);
  }
  void Press(const char* panel, const char* text) {
    for (auto* button : Find<QWidget>(panel).findChildren<QPushButton*>())
      if (button->text() == text) button->click();
  }
  QStringList Column(const char* table, int column) {
    QStringList cells;
    const auto& widget = Find<QTableWidget>(table);
    for (int row = 0; row < widget.rowCount(); ++row)
      cells.append(widget.item(row, column)->text());
    return cells;
  }
};

TEST_F(AnalysisPanels, ValuesAreThoseOfWhatWasTypedLast) {
  Run("AnalysisEvaluate1");
  QTest::keyClicks(&Find<QLineEdit>("e_X"), "20.5");
  EXPECT_EQ(Column("EvaluatedValues", 0), (QStringList{"Nearest point", "Interpolated"}));
  EXPECT_EQ(Column("EvaluatedValues", 2).last(), "1.005");
  Press("Txy_EValue", "&Copy");
  EXPECT_TRUE(QApplication::clipboard()->text().contains("Interpolated\t20.5\t1.005\t"));
  QTest::keyClicks(&Find<QLineEdit>("e_Y"), "26");
  EXPECT_TRUE(Find<QLineEdit>("e_X").text().isEmpty());
  EXPECT_EQ(Column("EvaluatedValues", 1).size(), 4);
  Find<QLineEdit>("e_Y").clear();
  QTest::keyClicks(&Find<QLineEdit>("e_Y"), "much");
  EXPECT_FALSE(Find<QLineEdit>("e_Y").toolTip().isEmpty());
  EXPECT_TRUE(Column("EvaluatedValues", 1).isEmpty());
  Graph().SetCurrentSeriesIndex(0);
  EXPECT_NE(Find<QLabel>("EvaluatedDataSet").text(), "Spectrum");
}

TEST_F(AnalysisPanels, AFieldWithNothingToUndoLeavesTheKeyToTheGraph) {
  ActiveDocument().Edit("Clear", [](TxyGraph& graph) { graph.Series(1).Clear(); });
  Run("AnalysisEvaluate1");
  auto& line = Find<QLineEdit>("e_X");
  TakeFocus(line);
  for (const char* typed : {"2", ""}) {
    QTest::keyClicks(&line, typed);
    QTest::keyClick(&line, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(line.text(), "");
    EXPECT_EQ(ActiveDocument().History().CanUndo(), *typed != '\0') << typed;
  }
}

TEST_F(AnalysisPanels, AnXIsPickedInTheGraph) {
  Run("AnalysisEvaluate1");
  Find<QPushButton>("PickX").click();
  const TAxis& axis = Graph().Axis(AxisId::X);
  const QPointF place(axis.Scale().Position(100), ActiveCanvas().Layout().plot.center().y());
  QTest::mouseClick(&ActiveCanvas(), Qt::LeftButton, {}, place.toPoint());
  EXPECT_NEAR(Find<QLineEdit>("e_X").text().toDouble(), 100, 3);
  EXPECT_FALSE(Find<QPushButton>("PickX").isChecked());
  EXPECT_EQ(Graph().CurrentSeries()->SeriesName(), "Spectrum");
}

TEST_F(AnalysisPanels, ADataSetThatIsDeletedTakesItsFiguresAlong) {
  Run("AnalysisEvaluate1");
  QTest::keyClicks(&Find<QLineEdit>("e_X"), "20.5");
  Run("AnalysisPeakTable1");
  Press("PeakPanel", "Fi&nd");
  ASSERT_FALSE(Column("PeakTable", 0).isEmpty());
  ActiveDocument().Edit("Delete", [](TxyGraph& graph) {
    while (graph.SeriesCount() > 0) graph.DeleteSeries(0);
  });
  EXPECT_TRUE(Column("PeakTable", 0).isEmpty());
  EXPECT_TRUE(Column("EvaluatedValues", 1).isEmpty());
  Press("PeakPanel", "Fi&nd");
  EXPECT_EQ(TakeTold(), std::vector<std::string>{"No DataSet Found!"});
}

TEST_F(AnalysisPanels, PeaksAreFoundShownAndFitted) {
  Run("AnalysisPeakTable1");
  Press("PeakPanel", "Fi&nd");
  EXPECT_EQ(Column("PeakTable", 0), (QStringList{"100", "200"}));
  const double shown = Graph().Axis(AxisId::X).Max();
  emit Find<QTableWidget>("PeakTable").cellClicked(0, 0);
  EXPECT_LT(Graph().Axis(AxisId::X).Max(), shown);
  Press("PeakPanel", "Fit &These Peaks");
  EXPECT_TRUE(Column("PeakTable", 0).first().contains(" ± "));
  const auto told = [&] { return Find<QLabel>("PeaksTold").text().toStdString(); };
  EXPECT_NE(told().find(Graph().Series(1).Fit().Result()->verdict.summary), std::string::npos);
  EXPECT_EQ(Graph().SeriesCount(), 4u);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Fit Peaks");
  ActiveDocument().History().Undo();
  EXPECT_EQ(Graph().SeriesCount(), 2u);
  EXPECT_TRUE(Graph().Series(1).Fit().Expression().empty());
  EXPECT_EQ(Column("PeakTable", 0), (QStringList{"100", "200"}))
      << "no values of a fit that is gone";
  EXPECT_EQ(told().substr(0, 22), "The fit was taken back");
  Graph().Series(1).SetY(5, 7);
  EXPECT_EQ(told().substr(0, 18), "The points changed");
  Graph().SetCurrentSeriesIndex(0);
  EXPECT_TRUE(Column("PeakTable", 0).isEmpty());
}

TEST_F(AnalysisPanels, PeaksAreThoseOfTheDataSetChosenThereAndTheirFitIsShownAgain) {
  Run("AnalysisPeakTable1");
  auto& list = *Find<QWidget>("PeakPanel").findChild<QComboBox*>("seriesCombobox");
  EXPECT_EQ(list.currentText(), "Spectrum");
  Press("PeakPanel", "Fi&nd");
  EXPECT_TRUE(Find<QLabel>("PeaksTold").text().startsWith("2 peaks of \"Spectrum\"."));
  Press("PeakPanel", "Fit &These Peaks");
  const QStringList fitted = Column("PeakTable", 0);
  for (const int line : {0, 1}) emit list.activated(line);
  EXPECT_EQ(Graph().CurrentSeriesIndex(), 1);
  EXPECT_EQ(list.currentText(), "Spectrum");
  EXPECT_EQ(Column("PeakTable", 0), fitted) << "it holds still";
  ActiveDocument().History().Undo();
  EXPECT_TRUE(Column("PeakTable", 0).isEmpty());
}

}  // namespace
}  // namespace tarnwick
