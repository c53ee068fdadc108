// Fitting in the window, driven by menus, buttons and fields as a user does.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdlib>

#include "analysis/fits/fit_run.h"
#include "data/series/points_mark.h"
#include "desk/commands/command_actions.h"
#include "fit/model/fit_record_file.h"
#include "fit_desktop_fixture.h"
#include "graph/edit/point_edit.h"
#include "results/fit_leftovers.h"
#include "support/project_paths.h"

namespace tarnwick {
namespace {

TEST_F(FitDesktopTest, EveryEntryOfTheMenuStandsInItsPlace) {
  QStringList entries;
  for (const QAction* item : Opened(Menu::CurveFitting).actions()) {
    entries.append(item->isSeparator() ? "-" : item->text());
  }
  EXPECT_EQ(entries.join(" | ").toStdString(),
            "&Edit | &None | Draw &Function | Show Final &Curve | Show Every &Step | - | "
            "Se&ttings | &Print on Graph | Fit &Live Data | - | &1 Broken | &2 Decay");
}

TEST_F(FitDesktopTest, WithoutADataSetEveryCommandSaysSo) {
  Start({});
  Run("FileNew1");
  for (const char* command :
       {"editFunction1", "FitNone1", "FitFunction1", "FitCurve1", "FitSettings1", "FitPrint1"}) {
    Run(command);
    EXPECT_EQ(TakeTold(), std::vector<std::string>{"No DataSet Found!"}) << command;
  }
  Choose("&2 Decay");
  EXPECT_EQ(TakeTold(), std::vector<std::string>{"No DataSet Found!"});
}

TEST_F(FitDesktopTest, AFileThatIsNoFunctionChangesNothing) {
  Start({Example("decay.dat")});
  Choose("&1 Broken");
  EXPECT_EQ(TakeTold(), std::vector<std::string>{"Wrong File Format!"});
  EXPECT_EQ(Series().Fit().Settings(), FitSettings());
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
  Drop(ActiveCanvas(), {folder_.File("Decay.tfn")});  // a file of its own: once taken for data
  EXPECT_EQ(Series().Fit().Expression(), Decay().Expression);
}

TEST_F(FitDesktopTest, AFunctionIsDrawnThenFittedAsTheEngineDoes) {
  Start({Example("decay.dat")});
  Choose("&2 Decay");
  EXPECT_EQ(Series().Fit().Status(), FitStatus::cf_Function);
  EXPECT_TRUE(form_->Actions().ActionOf("FitFunction1")->isChecked());
  EXPECT_FALSE(Series().Curve().Points().Empty());

  NoProgress quiet;
  const FitResult expected = RunFit(PrepareFit(Series()), quiet);
  Run("FitCurve1");
  EXPECT_TRUE(form_->Actions().ActionOf("FitCurve1")->isChecked());
  ASSERT_NE(Series().Fit().Result(), nullptr);
  for (std::size_t i = 0; i < expected.values.size(); ++i) {
    EXPECT_EQ(Series().Fit().Param(static_cast<int>(i) + 1).Value(), expected.values[i]);
  }
  EXPECT_TRUE(form_->findChild<QDockWidget*>("FitResult")->isVisible());
  EXPECT_EQ(form_->findChild<QLabel*>("FitVerdict")->text().toStdString(),
            expected.verdict.summary);
  auto* const verdict = form_->findChild<QLabel*>("FitVerdict");
  for (const int width : {300, 520}) {
    form_->resizeDocks({form_->findChild<QDockWidget*>("FitResult")}, {width}, Qt::Horizontal);
    QCoreApplication::processEvents();
    EXPECT_EQ(verdict->parentWidget()->height(),
              std::max(verdict->heightForWidth(verdict->width()), 26))
        << "no blank below it";
  }
  EXPECT_EQ(Table("FitParameters")->item(1, 0)->text(), "k");

  const std::shared_ptr<const FitResult> first = Series().Fit().Result();
  Run("FitCurve1");  // nothing changed since: nothing is fitted
  EXPECT_EQ(Series().Fit().Result(), first);

  Run("EditUndo1");
  EXPECT_EQ(Series().Fit().Param(1).Value(), 300);
  EXPECT_EQ(Series().Fit().Status(), FitStatus::cf_Function);
  EXPECT_TRUE(form_->findChild<QLabel*>("FitHint")->isVisible());  // there was no fit then
  Run("EditUndo1");
  EXPECT_TRUE(form_->findChild<QLabel*>("FitHint")->isVisible());
  Run("EditRedo1");
  Run("EditRedo1");
  EXPECT_EQ(Series().Fit().Result(), first);
  EXPECT_FALSE(form_->findChild<QLabel*>("FitOutdated")->isVisible());
}

/// What a file of the graph keeps of its first DataSet's last fit.
std::string RowsOfFit(const TxyGraph& graph) {
  std::string rows;
  SectionWriter writer(rows, WriterMode::Text);
  WriteLastFit(writer, graph.Series(0).Fit().Last(), [&] { return MarkOf(graph.Series(0)); });
  return rows;
}

TEST_F(FitDesktopTest, AGraphOpenedAgainShowsItsFitWhicheverProgramSavedIt) {
  OpenFitted();
  const std::string verdict = form_->findChild<QLabel*>("FitVerdict")->text().toStdString();
  const std::string error = Table("FitParameters")->item(0, 2)->text().toStdString();
  const std::filesystem::path kept = folder_.File("kept.tgr"), batch = folder_.File("batch.tgr");
  chooser_->to_save = {kept};
  Run("FileSaveAs1");
  const std::string command = '"' + (testing::ProgramFolder() / "tarnwick-cli").string() +
                              "\" fit \"" + Example("decay.dat").string() + "\" --function \"" +
                              folder_.File("Decay.tfn").string() + "\" -o \"" + batch.string() +
                              "\" >\"" + folder_.File("told.txt").string() + '"';
  ASSERT_EQ(std::system(command.c_str()), 0);
  const std::string rows = RowsOfFit(ActiveDocument().Graph());
  EXPECT_GT(rows.size(), 1000U);
  Run("FileClose1");
  for (const std::filesystem::path& file : {kept, batch}) {
    Drop(*form_, {file});
    EXPECT_EQ(RowsOfFit(ActiveDocument().Graph()), rows) << file;
    EXPECT_EQ(form_->findChild<QLabel*>("FitVerdict")->text().toStdString(), verdict);
    EXPECT_EQ(Table("FitParameters")->item(0, 2)->text().toStdString(), error);
    auto* outdated = form_->findChild<QLabel*>("FitOutdated");
    EXPECT_FALSE(outdated->isVisible());
    ActiveDocument().Edit("Move Point", [](TxyGraph& graph) {
      MovePoint(graph, graph.Series(0), 3, {2.5, 300});
    });
    EXPECT_EQ(outdated->text(), "The points changed since this fit.");
    EXPECT_TRUE(outdated->isVisible());
    EXPECT_EQ(form_->findChild<QLabel*>("FitVerdict")->text().toStdString(), verdict);
  }
}

TEST_F(FitDesktopTest, WhatCannotBeFittedIsSaidWithoutFigures) {
  Start({Example("decay.dat")});
  Choose("&2 Decay");
  ActiveDocument().Edit("Model", [&](TxyGraph&) { Series().Fit().Param(2).SetValue(-1e6); });
  Run("FitCurve1");  // overflows at the start
  EXPECT_EQ(TakeTold().size(), 1u);
  EXPECT_EQ(Table("FitFigures")->item(0, 0)->text(), "Points used");
  EXPECT_FALSE(Button("&Residuals")->isEnabled());
  ActiveDocument().Edit("Clear", [&](TxyGraph&) { Series().Clear(); });
  EXPECT_TRUE(form_->findChild<QLabel*>("FitOutdated")->isVisible());
  Button("Fit A&gain")->click();
  Run("FitCurve1");
  const std::string empty = "DataSet \"" + Series().SeriesName() + "\" has no points to fit.";
  EXPECT_EQ(TakeTold(), (std::vector<std::string>{empty, empty}));
}

TEST_F(FitDesktopTest, EveryStepMovesTheCurve) {
  Start({Example("decay.dat")});
  Choose("&2 Decay");
  std::vector<double> values;
  QObject listener;
  QObject::connect(&ActiveDocument(), &Document::graphChanged, &listener,
                   [&] { values.push_back(Series().Fit().Param(1).Value()); });
  Run("FitEveryStep1");
  std::sort(values.begin(), values.end());
  const auto distinct = std::unique(values.begin(), values.end()) - values.begin();
  EXPECT_GE(distinct, 3);
  EXPECT_EQ(Series().Fit().Status(), FitStatus::cf_EveryStep);
  ASSERT_NE(Series().Fit().Result(), nullptr);
  EXPECT_EQ(Series().Fit().Result()->values[0], Series().Fit().Param(1).Value());
}

TEST_F(FitDesktopTest, AFitThatShowsItsEndTellsItsValuesMeanwhile) {
  Start({Example("decay.dat")});
  Choose("&2 Decay");
  const double start = Series().Fit().Param(1).Value();
  std::vector<double> told;
  QObject::connect(&ActiveDocument(), &Document::fitStepped, form_.get(),
                   [&](const Document*, std::size_t, const auto& values) { told = values; });
  Run("FitCurve1");
  ASSERT_EQ(told.size(), static_cast<std::size_t>(Series().Fit().NParams()));
  EXPECT_EQ(told[0], start) << "that of the first step";
  EXPECT_NE(Series().Fit().Param(1).Value(), start);
}

TEST_F(FitDesktopTest, CancelEndsTheFitAfterItsStep) {
  Start({Example("decay.dat")});
  FitSettings slow = Decay();
  slow.ProcType = FitProcType::cfp_Simplex;
  slow.IterMax = 1'000'000;
  ActiveDocument().Edit("Model",
                        [&](TxyGraph&) { Series().Fit().SetSettings(slow, MarkModified::Yes); });
  QString caption;
  QString text;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    auto* window = form_->findChild<QProgressDialog*>();
    if (!window || !window->isVisible()) return;
    caption = window->windowTitle();
    text = window->labelText();
    window->findChild<QPushButton*>()->click();
    watch.stop();
  });
  watch.start(20);
  Run("FitEveryStep1");
  EXPECT_EQ(caption, "Processing...");
  EXPECT_EQ(text, "Fitting Data....");
  ASSERT_NE(Series().Fit().Result(), nullptr);
  EXPECT_EQ(Series().Fit().Result()->outcome.why, StopReason::Cancelled);
}

TEST_F(FitDesktopTest, TheResultGoesBackIntoTheGraph) {
  OpenFitted();
  const TxyGraph& graph = ActiveDocument().Graph();
  Button("&Residuals")->click();
  ASSERT_EQ(graph.SeriesCount(), 2u);
  EXPECT_EQ(graph.Series(1).PointCount(), Series().PointCount());
  EXPECT_TRUE(graph.Series(1).Style().in_panel);
  EXPECT_FALSE(graph.GetLegend().visible);
  Button("&Confidence Bands")->click();
  EXPECT_TRUE(graph.GetLegend().visible) << "several are drawn now";
  Button("&Confidence Bands")->click();  // takes the place of the first
  ASSERT_EQ(graph.SeriesCount(), 6u);
  EXPECT_LE(graph.Series(2).PointCount(), 300);  // each is saved with the graph
  const Point upper = graph.Series(2).Points().Front();
  const Point lower = graph.Series(3).Points().Front();
  Series().Fit().Prepare();
  const double middle = Series().Fit().Value(upper.x);
  EXPECT_NEAR((upper.y + lower.y) / 2, middle, 1e-9 * middle);
  EXPECT_GT(upper.y, middle);

  Run("FitPrint1");
  Run("FitPrint1");
  ASSERT_EQ(graph.Marks().All().size(), 3u);
  EXPECT_TRUE(Series().Fit().Param(1).Printed());
  const std::string caption = graph.Marks().All()[0].caption;
  EXPECT_TRUE(caption.starts_with("A = ") && caption.find(" ± ") != std::string::npos) << caption;

  auto* bar = form_->findChild<QWidget*>("FitBar");
  EXPECT_FALSE(bar->isVisible());
  ActiveDocument().Edit("Move Point", [](TxyGraph& edited) {
    MovePoint(edited, edited.Series(0), 3, {2.5, 300});
  });
  EXPECT_TRUE(bar->isVisible());
  EXPECT_EQ(OutdatedText(graph, Series()),
            "The bands, residuals and printed values on the graph are of a fit of \"" +
                Series().SeriesName() + "\" that holds no more.");
  bar->findChild<QPushButton*>("FitAgain")->click();
  EXPECT_FALSE(bar->isVisible());
  ASSERT_EQ(graph.SeriesCount(), 6u) << "made anew, not beside";
  EXPECT_NE(graph.Series(2).Points().Front().y, upper.y);
  const std::string renewed = graph.Marks().All()[0].caption;
  EXPECT_NE(renewed, caption);
  ASSERT_EQ(graph.Marks().All().size(), 3u);

  Button("Copy as Ta&ble")->click();
  EXPECT_TRUE(QApplication::clipboard()->text().startsWith("Parameter\tValue\tStandard error"));

  // Of two fitted DataSets neither takes the other's lines.
  ActiveDocument().Edit("Model", [&](TxyGraph& edited) {
    edited.Series(1).Fit().SetSettings(Decay(), MarkModified::Yes);
    edited.SetCurrentSeriesIndex(1);
  });
  Run("FitPrint1");
  EXPECT_EQ(graph.Marks().All().size(), 6u);
  EXPECT_EQ(graph.Marks().All()[0].caption, graph.Series(0).SeriesName() + ": " + renewed);
}

}  // namespace
}  // namespace tarnwick
