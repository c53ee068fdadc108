// What a computation makes of a graph is the same from the window's documents and from the batch program: byte for byte.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "app/analysis/average_dialog.h"
#include "app/analysis/integr_dialog.h"
#include "app/analysis/peaks_dialog.h"
#include "app/analysis/tool_dialog.h"
#include "app/fit/fit_outcome.h"
#include "app/fit/fit_work.h"
#include "base/progress.h"
#include "desk/document/document.h"
#include "desktop_fixture.h"
#include "graph/files/graph_file.h"
#include "results/tools/tool_table.h"
#include "support/project_paths.h"
#include "support/scripted_prompt.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::ReadFile;

/// Works at once.
class ImmediateWork final : public LongWork {
 public:
  void DoRun(const WorkTitle&, const std::function<void(Progress&)>& work) override {
    NoProgress progress;
    work(progress);
  }
};

struct Row {
  std::string name;
  std::string command;  // of the batch program, with $TFN for the ready-made functions
  std::function<void(Document&, Prompt&)> edits;
};

void FitWithAll(Document& document, Prompt& prompt) {
  ApplyFitFunction(document, testing::SourceFolder() / "TFN/Exponential decay.tfn");
  ShowFit(document, FitStatus::cf_FinResult, prompt);
  for (int i = 0; i < 2; ++i) AddResiduals(document);  // the second takes the place of the first
  AddBands(document, 0.9);
  PrintFitOnGraph(document);
}

template <class Widget>
Widget& Find(const QDialog& dialog, const char* name) {
  return *dialog.findChild<Widget*>(name);
}

template <DerivedKind kMode>
void Integrate(Document& document, Prompt& prompt) {
  Txy_Integr(document, kMode, prompt).accept();
}

void SumOnMain(Document& document, Prompt& prompt) {
  Txy_Integr dialog(document, DerivedKind::RunningSum, prompt);
  Find<QLineEdit>(dialog, "e_Name").setText("Sums");
  Find<QAbstractButton>(dialog, "AxisMain").click();
  Find<QAbstractButton>(dialog, "cbx_HideSource").click();
  dialog.accept();
}

void CountInBins(Document& document, Prompt& prompt) {
  Txy_Integr dialog(document, DerivedKind::Histogram, prompt);
  Find<QSpinBox>(dialog, "e_Bins").setValue(12);
  dialog.accept();
}

void AverageAll(Document& document, Prompt& prompt) {
  Txy_Average dialog(document, prompt);
  for (auto* button : dialog.findChildren<QAbstractButton*>())
    if (button->text() == "All") button->click();
  dialog.accept();
}

void MarkSomePeaks(Document& document, Prompt& prompt) {
  Txy_Peaks dialog(document, prompt);
  Find<QLineEdit>(dialog, "e_LeftMargin").setText("100");
  Find<QLineEdit>(dialog, "e_NoiseLevel").setText("0.5");
  Find<QSpinBox>(dialog, "e_Precision").setValue(2);
  dialog.accept();
}

void SmoothDerivative(Document& document, Prompt& prompt) {
  ToolDialog dialog(document, kSmoothTool, prompt);
  for (auto* box : dialog.findChildren<QSpinBox*>()) {
    if (box->accessibleName() == "Window") box->setValue(9);
    if (box->accessibleName() == "Derivative") box->setValue(1);
  }
  dialog.accept();
}

/// Chooses the polynomial, through these regions.
void ChoosePolynomial(ToolDialog& dialog, const char* regions) {
  for (auto* list : dialog.findChildren<QComboBox*>()) {
    if (list->accessibleName() != "Method") continue;
    list->setCurrentIndex(2);
    emit list->activated(2);
  }
  for (auto* line : dialog.findChildren<QLineEdit*>()) {
    if (line->accessibleName() != "Regions of X") continue;
    line->setText(regions);
    emit line->textEdited(regions);
  }
}

void LineThroughRegions(Document& document, Prompt& prompt) {
  ToolDialog dialog(document, kBackgroundTool, prompt);
  ChoosePolynomial(dialog, "0:60, 900:1200");
  dialog.accept();
}

void CurveThroughRegions(Document& document, Prompt& prompt) {
  ToolDialog dialog(document, kBackgroundTool, prompt);
  ChoosePolynomial(dialog, "0:300, 600:1200");
  for (auto* box : dialog.findChildren<QSpinBox*>()) {
    if (box->accessibleName() == "Degree") box->setValue(3);
  }
  dialog.accept();
}

void Double(Document& document, Prompt& prompt) {
  ToolDialog dialog(document, kComputeTool, prompt);
  dialog.findChild<QPlainTextEdit*>()->setPlainText("2*A");
  dialog.accept();
}

/// As the dialog of the tool begins.
template <const Tool& kTool>
void UseTool(Document& document, Prompt& prompt) {
  ToolDialog(document, kTool, prompt).accept();
}

std::vector<Row> Rows() {
  return {
      {"Fit",
       "fit --function \"$TFN/Exponential decay.tfn\" --residuals --band-curves --level 0.9 "
       "--print",
       FitWithAll},
      {"Integral", "integrate", Integrate<DerivedKind::Integral>},
      {"RunningSum", "sum --name Sums --axis main --show-source", SumOnMain},
      {"Histogram", "histogram --bins 12", CountInBins},
      {"Derivative", "differentiate",
       [](Document& document, Prompt& prompt) { Txy_Differ(document, prompt).accept(); }},
      {"Average", "average --reference 1 --of 1", AverageAll},
      {"Smooth", "smooth --window 9 --derivative 1", SmoothDerivative},
      {"Background", "background", UseTool<kBackgroundTool>},
      {"StraightBaseLine", "background --method polynomial --regions \"0:60, 900:1200\"",
       LineThroughRegions},
      {"CurvedBaseLine", "background --method polynomial --degree 3 --regions \"0:300, 600:1200\"",
       CurveThroughRegions},
      {"Compute", "compute --expression 2*A", Double},
      {"Spectrum", "spectrum", UseTool<kSpectrumTool>},
      {"Correlate", "correlate", UseTool<kCorrelateTool>},
      {"Resample", "resample", UseTool<kResampleTool>},
      {"Clip", "clip", UseTool<kClipTool>},
      {"Normalise", "normalise", UseTool<kNormaliseTool>},
      {"Outliers", "outliers", UseTool<kOutliersTool>},
      {"Peaks", "peaks --left 100 --noise 0.5 --precision 2", MarkSomePeaks},
  };
}

void Batch(const testing::TemporaryFolder& folder, const std::string& arguments) {
  const std::string command =
      "cd '" + folder.Path().string() + "' && TFN='" + (testing::SourceFolder() / "TFN").string() +
      "' && '" + (testing::ProgramFolder() / "tarnwick-cli").string() + "' " + arguments + " >.out";
  ASSERT_EQ(std::system(command.c_str()), 0) << arguments;
}

class TwoFaces : public ::testing::TestWithParam<Row> {
 protected:
  testing::TemporaryFolder folder_;
};

TEST_P(TwoFaces, MakeOneGraph) {
  const std::filesystem::path data = testing::SourceFolder() / "examples/decay.dat";
  Batch(folder_, "import '" + data.string() + "' -o start.tgr");
  Batch(folder_, GetParam().command + " start.tgr -o batch.tgr");

  ImmediateWork work;
  testing::ScriptedPrompt prompt;
  Document document("Graph_1", work, prompt);
  document.Files().LoadGraphFile(folder_.File("start.tgr"));
  GetParam().edits(document, prompt);
  document.Files().SaveGraphFile(folder_.File("window.tgr"));

  const std::string start = ReadFile(folder_.File("start.tgr"));
  const std::string window = ReadFile(folder_.File("window.tgr"));
  EXPECT_NE(window, start);
  EXPECT_TRUE(window == ReadFile(folder_.File("batch.tgr")));
}

INSTANTIATE_TEST_SUITE_P(All, TwoFaces, ::testing::ValuesIn(Rows()),
                         [](const auto& row) { return row.param.name; });

class BesideTheBatchProgram : public testing::DesktopTest {};

TEST_F(BesideTheBatchProgram, RecomputesAlike) {
  Batch(folder_, "integrate '" + Example("decay.dat").string() + "' -o made.tgr");
  Batch(folder_, "baseline made.tgr --dataset 1 --offset 2 --slope 0.01 -o moved.tgr");
  Batch(folder_, "recompute moved.tgr -o batch.tgr");
  Start({folder_.File("moved.tgr")});
  Expect("1 DataSet computed anew.", Answer::Ok);
  Run("AnalysisRecompute1");
  ActiveDocument().Files().SaveGraphFile(folder_.File("window.tgr"));
  const std::string window = ReadFile(folder_.File("window.tgr"));
  EXPECT_NE(window, ReadFile(folder_.File("moved.tgr")));
  // The window places the legend for its own size.
  const auto of_window = LoadGraph(folder_.File("window.tgr"));
  const auto of_batch = LoadGraph(folder_.File("batch.tgr"));
  of_batch->SetLegend(of_window->GetLegend());
  of_batch->SetDimensions(of_window->GetDimensions());
  EXPECT_EQ(EncodeGraph(*of_window, {}), EncodeGraph(*of_batch, {}));
}

TEST_F(BesideTheBatchProgram, MeasuresPeaksAlike) {
  std::string text = "x,y\n";
  for (int x = 0; x < 300; ++x)
    text += std::to_string(x) + ',' + std::to_string((x - 100) * (x - 200) % 997) + '\n';
  Batch(folder_, "peaks --prominence 6 '" + folder_.Write("spectrum.csv", text).string() + "'");
  Start({folder_.File("spectrum.csv")});
  Run("AnalysisPeakTable1");
  chooser_->to_save = {folder_.File("window.csv")};
  for (const char* text_of_button : {"Fi&nd", "&Save..."}) {
    for (auto* button : form_->findChild<QWidget*>("PeakPanel")->findChildren<QAbstractButton*>())
      if (button->text() == text_of_button) button->click();
  }
  const std::string table = ReadFile(folder_.File("window.csv"));
  EXPECT_GT(std::ranges::count(table, '\n'), 2) << "a head and peaks";
  EXPECT_EQ(table, ReadFile(folder_.File(".out")));
}

}  // namespace
}  // namespace tarnwick
