// What dialogs that make a DataSet offer, show and leave behind. That their results are those of the batch program is
// compared in two_faces_test.cpp.
#include "app/analysis/integr_dialog.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

#include "app/analysis/average_dialog.h"
#include "app/analysis/tool_dialog.h"
#include "desk/commands/command_actions.h"
#include "desktop_fixture.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

class ResultDialogs : public DesktopTest {
 protected:
  void SetUp() override {
    DesktopTest::SetUp();
    Start({Example("decay.dat")});
    graph_ = &ActiveDocument().Graph();
    source_ = graph_->CurrentSeries()->SeriesName();
  }
  Txy_Integr& Open(DerivedKind mode) {
    dialog_.reset();
    dialog_ = std::make_unique<Txy_Integr>(ActiveDocument(), mode, *prompt_);
    return *dialog_;
  }
  template <class Widget>
  Widget& Find(const char* name) {
    return *dialog_->findChild<Widget*>(name);
  }
  bool CanFinish() {
    for (const auto* button : dialog_->findChildren<QPushButton*>())
      if (button->text() == "O&K") return button->isEnabled();
    return false;
  }
  void TearDown() override {
    dialog_.reset();
    DesktopTest::TearDown();
  }

  std::unique_ptr<Txy_Integr> dialog_;
  TxyGraph* graph_ = nullptr;
  std::string source_;
};

TEST_F(ResultDialogs, BeginWithWhatEachModeIsCalled) {
  const struct {
    DerivedKind mode;
    const char *caption, *suffix;
  } kRows[] = {{DerivedKind::Integral, "Numerical Integration", "_INT"},
               {DerivedKind::RunningSum, "Running Summation", "_SUM"},
               {DerivedKind::Histogram, "Running Histogram", "_HIS"}};
  for (const auto& row : kRows) {
    EXPECT_EQ(Open(row.mode).windowTitle(), row.caption);
    EXPECT_EQ(Find<QLineEdit>("e_Name").text().toStdString(), source_ + row.suffix);
    EXPECT_TRUE(Find<QAbstractButton>("AxisSecond").isChecked());
    EXPECT_TRUE(Find<QAbstractButton>("cbx_HideSource").isChecked());
    auto* bins = dialog_->findChild<QSpinBox*>("e_Bins");
    EXPECT_EQ(bins != nullptr, row.mode == DerivedKind::Histogram);
    if (bins) {
      EXPECT_EQ(bins->value(), 100);
    }
  }
}

TEST_F(ResultDialogs, ShowTheResultPaleAndLeaveNothingWhenCancelled) {
  const GraphState before = graph_->State();
  Open(DerivedKind::Integral);
  ASSERT_EQ(graph_->SeriesCount(), 2u);
  const Color pale = graph_->Series(1).Style().line_color;
  EXPECT_TRUE(graph_->Series(0).Style().visible);
  dialog_->reject();
  EXPECT_EQ(graph_->SeriesCount(), 1u);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());

  Open(DerivedKind::Integral).accept();
  EXPECT_NE(graph_->Series(1).Style().line_color, pale);
  EXPECT_FALSE(graph_->Series(0).Style().visible);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Integrate");
  ActiveDocument().History().Undo();
  EXPECT_EQ(graph_->SeriesCount(), 1u);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
}

TEST_F(ResultDialogs, RefuseANameThatCannotBeHad) {
  Open(DerivedKind::Integral);
  auto& name = Find<QLineEdit>("e_Name");
  for (const char* wanted : {source_.c_str(), "  "}) {
    name.setText(wanted);
    emit name.textEdited(wanted);
    EXPECT_FALSE(CanFinish());
    EXPECT_FALSE(Find<QLabel>("NameRefusal").text().isEmpty());
    EXPECT_EQ(graph_->SeriesCount(), 1u);
  }
  name.setText("other");
  emit name.textEdited("other");
  EXPECT_TRUE(CanFinish());
  EXPECT_EQ(graph_->Series(1).SeriesName(), "other");
}

TEST_F(ResultDialogs, TellThatTheDataSetIsGone) {
  for (const bool deleted : {false, true}) {
    Open(DerivedKind::Integral);
    // It would take back what else happens to the graph.
    Find<QAbstractButton>("cbx_Preview").click();
    if (deleted) {
      graph_->DeleteSeries(0);
    } else {
      graph_->Series(0).SetSeriesName("another");
    }
    const std::size_t left = graph_->SeriesCount();
    dialog_->accept();
    EXPECT_EQ(TakeTold(), std::vector<std::string>{"DataSet Not Found!"});
    EXPECT_EQ(graph_->SeriesCount(), left);
  }
}

TEST_F(ResultDialogs, TellThatALiveLinkIsNotFollowed) {
  graph_->Series(0).Source().DataSource = DataSourceKind::Dde;
  Open(DerivedKind::Integral);
  EXPECT_TRUE(Find<QLabel>("Told").text().contains("fed by a live link"));
  EXPECT_EQ(graph_->SeriesCount(), 1u);  // a preview would take back what the link brings
}

TEST_F(ResultDialogs, AnAverageIsOfWhatStandsInItsList) {
  Txy_Average dialog(ActiveDocument(), *prompt_);
  auto& list = *dialog.findChild<QListWidget*>();
  const auto press = [&](const char* text) {
    for (auto* button : dialog.findChildren<QPushButton*>())
      if (button->text() == text) button->click();
  };
  EXPECT_EQ(dialog.findChild<QLineEdit*>("e_Name")->text().toStdString(), "Average_" + source_);
  EXPECT_TRUE(dialog.findChild<QAbstractButton*>("AxisMain")->isChecked());
  EXPECT_EQ(dialog.findChild<QGroupBox*>()->title(), "Source Data Sets");
  press("O&K");
  EXPECT_EQ(dialog.result(), QDialog::Rejected);  // nothing to average
  const struct {
    const char* button;
    int lines;
  } kRows[] = {{">>", 1}, {">>", 1}, {"X", 0}, {"All", 1}, {"<<", 0}, {"<<", 0}, {">>", 1}};
  for (const auto& row : kRows) {
    press(row.button);
    if (row.lines > 0) list.setCurrentRow(0);
    EXPECT_EQ(list.count(), row.lines) << row.button;
  }
  press("O&K");
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(graph_->Series(1).SeriesName(), "Average_" + source_);
}

TEST_F(ResultDialogs, OfToolsShowWhatSuitsTheirSource) {
  const auto field = [](const QDialog& dialog, const char* caption) -> QLineEdit& {
    for (auto* line : dialog.findChildren<QLineEdit*>())
      if (line->accessibleName() == caption) return *line;
    throw std::runtime_error(caption);
  };
  ToolDialog resample(ActiveDocument(), kResampleTool, *prompt_);
  QLineEdit& step = field(resample, "Step of X");
  EXPECT_EQ(step.text(), "10");
  step.setText("20");
  emit step.textEdited("20");
  EXPECT_EQ(graph_->Series(1).PointCount(), 61);
  step.setText("ten");
  emit step.textEdited("ten");
  EXPECT_EQ(graph_->SeriesCount(), 1u);
  resample.accept();  // nothing happens while it is no number
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
  resample.reject();
  EXPECT_EQ(field(ToolDialog(ActiveDocument(), kClipTool, *prompt_), "Y to").text(), "INF");
}

TEST_F(ResultDialogs, OfManyPointsComputeThePreviewElsewhere) {
  std::vector<double> x(30'000);
  std::iota(x.begin(), x.end(), 1000.0);
  x.back() += 0.5;  // uneven, which takes its time
  graph_->Series(0).AddPoints(x, x);
  const std::int32_t points = graph_->Series(0).PointCount();
  ToolDialog dialog(ActiveDocument(), kSmoothTool, *prompt_);
  auto& told = *dialog.findChild<QLabel*>("Told");
  EXPECT_TRUE(told.text().contains("on its way"));
  EXPECT_EQ(graph_->SeriesCount(), 1u);
  for (auto* box : dialog.findChildren<QSpinBox*>())
    if (box->accessibleName() == "Window") box->setValue(9);  // gives up what was begun
  EXPECT_TRUE(QTest::qWaitFor([&] { return graph_->SeriesCount() == 2; }));
  EXPECT_TRUE(told.text().contains("noise"));
  dialog.accept();
  ASSERT_EQ(graph_->SeriesCount(), 2u);
  EXPECT_EQ(graph_->Series(1).PointCount(), points);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Smoothing");
}

TEST_F(ResultDialogs, WhatWasComputedIsComputedAnewAsOneStep) {
  EXPECT_FALSE(form_->Actions().ActionOf("AnalysisRecompute1")->isEnabled());
  ToolDialog(ActiveDocument(), kSmoothTool, *prompt_).accept();
  const double before = *GetY(graph_->Series(1), 9);
  graph_->Series(0).SetY(9, 1e6);
  Expect("1 DataSet computed anew.", Answer::Ok);
  Run("AnalysisRecompute1");
  EXPECT_NE(*GetY(graph_->Series(1), 9), before);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Recompute");

  const auto is_outdated = [this] { return ActiveDocument().Told().Tells(ToldAbout::Outdated); };
  EditHistory& history = ActiveDocument().History();
  ActiveDocument().Files().Refresh();
  EXPECT_TRUE(is_outdated());
  history.Undo();
  EXPECT_FALSE(is_outdated()) << "the data before are back";
  history.Redo();
  Expect("1 DataSet computed anew.", Answer::Ok);
  Run("AnalysisRecompute1");
  EXPECT_FALSE(is_outdated());
  history.Undo();
  EXPECT_TRUE(is_outdated());
}

TEST_F(ResultDialogs, AreaAndSumAreTold) {
  auto series = std::make_unique<TSeries>();
  series->SetSeriesName("Line");
  for (const double x : {0, 1, 2}) series->AddPoint(x, x / 3);
  graph_->AddSeries(std::move(series));
  graph_->SetCurrentSeriesIndex(1);
  const std::string name = "\"" + ActiveDocument().Name() + ".Line\" :  ";
  Expect("Area for DataSet   " + name + "0.666666666666667", Answer::Ok);
  Run("FindArea1");
  Expect("Sum of 3 data points for " + name + "1", Answer::Ok);
  Run("findSum1");
}

}  // namespace
}  // namespace tarnwick
