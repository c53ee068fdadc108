// Writing and fitting functions in the equation editor, driven by its buttons and fields as a user does.
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <QTest>
#include <algorithm>
#include <map>

#include "app/fit/model_check.h"
#include "app/fit/verdict_label.h"
#include "desk/widgets/checked_field.h"
#include "fit/model/fit_function_file.h"
#include "fit_desktop_fixture.h"

namespace tarnwick {
namespace {

TEST_F(FitDesktopTest, SettingsAreAppliedAtOnceAndCancelRestores) {
  OpenFitted();
  const FitSettings before = Series().Fit().Settings();
  const auto result = Series().Fit().Result();
  InEditor([&](QDialog& dialog) {
    auto* expression = dialog.findChild<QPlainTextEdit*>("ExpressionEdit");
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    expression->setPlainText("A*exp(-k*x");
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_FALSE(dialog.findChild<QLabel*>("ExpressionMessage")->text().isEmpty());
    EXPECT_EQ(Series().Fit().Expression(), before.Expression);
    expression->setPlainText("A*exp(-k*x)+B*x");
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_EQ(Series().Fit().Expression(), "A*exp(-k*x)+B*x");
    auto* parameters = dialog.findChild<QTableWidget*>("ParameterTable");
    parameters->item(2, 1)->setText("0.5");
    EXPECT_EQ(Series().Fit().Param(3).Value(), 0.5);
    parameters->item(2, 4)->setText("2");  // a lower bound above the value
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_NE(expression->palette().color(QPalette::Base), WrongColor());  // its parameter is
    parameters->item(2, 4)->setText("x");
    EXPECT_TRUE(dialog.findChild<QLabel*>("ExpressionMessage")->text().contains("no number"));
    parameters->item(2, 4)->setText("0.1");
    EXPECT_EQ(Series().Fit().Settings().parameters[2].Low, 0.1);
    parameters->item(1, 6)->setText("2*A");
    EXPECT_EQ(Series().Fit().Settings().parameters[1].Tie, "2*A");
    EXPECT_FALSE(Series().Fit().Param(2).Vary());
    dialog.findChild<QComboBox*>("FitWeights")->setCurrentIndex(3);
    EXPECT_EQ(Series().Fit().Settings().weighting.weights, FitWeights::Counts);
  });
  EXPECT_EQ(Series().Fit().Settings(), before);
  EXPECT_EQ(Series().Fit().Result(), result);
}

TEST_F(FitDesktopTest, ApplyAndOkAreAStepEachAndAnEmptiedExpressionStays) {
  OpenFitted();
  InEditor([&](QDialog& dialog) {
    auto* expression = dialog.findChild<QPlainTextEdit*>("ExpressionEdit");
    auto* buttons = dialog.findChild<QDialogButtonBox*>();
    expression->setPlainText("A*exp(-k*x)+B+1");
    buttons->button(QDialogButtonBox::Apply)->click();
    expression->clear();
    EXPECT_EQ(dialog.findChild<QLabel*>("ExpressionMessage")->text(),
              "The field is empty; the model keeps A*exp(-k*x)+B+1");
    EXPECT_EQ(expression->palette().color(QPalette::Base), WrongColor());
    for (const char* key : {"2", " * ", "0", " div ", "'"})
      for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text() == key) button->click();
    EXPECT_EQ(expression->toPlainText(), "2 * 0 div '");
    expression->setPlainText("A*exp(-k*x)+B+2");
    buttons->button(QDialogButtonBox::Ok)->click();
  });
  for (const char* expected : {"A*exp(-k*x)+B+2", "A*exp(-k*x)+B+1", "A*exp(-k*x)+B"}) {
    EXPECT_EQ(Series().Fit().Expression(), expected);
    Run("EditUndo1");
  }
}

TEST_F(FitDesktopTest, TheCalculatorKnowsTheModelsNames) {
  OpenFitted();
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("A*x");
    dialog.findChild<QTableWidget*>("ParameterTable")->item(0, 1)->setText("3");
    dialog.findChild<QLineEdit*>("CalculatorX")->setText("2");
    const struct {
      const char* typed;
      const char* answer;
    } rows[] = {{"", "6"},
                {"sqr(a)+x", "11"},
                {"1/0", "undefined"},
                {"q+1", "No value is known of q"},
                {"(1", "Unequal brackets"}};
    for (const auto& row : rows) {
      auto* line = dialog.findChild<QLineEdit*>("CalculatorEdit");
      line->setText(row.typed);
      line->setFocus();
      QTest::keyClick(line, Qt::Key_Return);
      EXPECT_TRUE(dialog.findChild<QLabel*>("CalculatorResult")->text().startsWith(row.answer))
          << row.typed;
    }
    EXPECT_TRUE(dialog.isVisible());
  });
}

TEST_F(FitDesktopTest, ASliderMovesValueAndCurveBetweenTheBounds) {
  OpenFitted();
  InEditor([&](QDialog& dialog) {
    auto* parameters = dialog.findChild<QTableWidget*>("ParameterTable");
    parameters->item(0, 4)->setText("50");
    parameters->item(0, 5)->setText("750");
    const double before = Series().Curve().Points().Front().y;
    auto* slider = qobject_cast<QSlider*>(parameters->cellWidget(0, 11));
    ASSERT_NE(slider, nullptr);
    slider->setValue(slider->maximum() / 2);
    EXPECT_EQ(parameters->item(0, 1)->text().toStdString(), "400");
    EXPECT_EQ(Series().Fit().Param(1).Value(), 400);
    EXPECT_NE(Series().Curve().Points().Front().y, before);
  });
}

TEST_F(FitDesktopTest, FunctionsAreSavedAndLoadedUnderTheirEnding) {
  OpenFitted();
  const FitSettings before = Series().Fit().Settings();
  const std::filesystem::path file = folder_.File("own/TFN/mine.tfn");
  InEditor([&](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("FunctionFile")->text(), "noname.tfn");
    auto* save = dialog.findChild<QPushButton*>("BtnSaveEqn");
    auto* expression = dialog.findChild<QPlainTextEdit*>("ExpressionEdit");
    const std::filesystem::path typed = folder_.File("own/TFN/mine.txt");
    chooser_->to_save = {typed, typed};
    save->click();
    EXPECT_EQ(chooser_->proposed.folder, file.parent_path());
    EXPECT_EQ(chooser_->proposed.graph_name, "noname.tfn");
    EXPECT_EQ(LoadFitFunction(file), before);
    expression->setPlainText("A*x");
    Expect("File " + file.string() + " exists. Overwrite?", Answer::No);
    save->click();
    EXPECT_EQ(LoadFitFunction(file), before);
    chooser_->to_open = {folder_.File("Decay.txt")};
    auto* load = dialog.findChild<QPushButton*>("BtnLoadEqn");
    load->click();
    EXPECT_EQ(expression->toPlainText().toStdString(), Decay().Expression);
    EXPECT_EQ(Series().Fit().Param(1).Value(), 300);
    chooser_->to_open = {folder_.File("Broken.tfn")};
    load->click();
    EXPECT_EQ(TakeTold(), std::vector<std::string>{"Wrong File Format!"});
    EXPECT_EQ(dialog.findChild<QTableWidget*>("ParameterTable")->rowCount(), 0);
    EXPECT_EQ(Series().Fit().Param(1).Value(), 300);  // what cannot be read goes no further
  });
  EXPECT_EQ(Series().Fit().Settings(), before);
  Choose("&3 mine");  // beside the ready-made ones, from now on
}

TEST_F(FitDesktopTest, ATypedFormulaStartsWithNewtonAndAllPoints) {
  Start({Example("decay.dat")});
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("A*exp(-(x/T)^2)*t");
    const auto* const message = dialog.findChild<QLabel*>("ExpressionMessage");
    EXPECT_TRUE(message->text().contains("T and t are one name"));  // beside unknown names, too
    Button("Ma&ke Parameters")->click();
    EXPECT_TRUE(message->text().endsWith("write A*exp(-((x/T)^2))*t"));
    dialog.accept();
  });
  const FitSettings model = Series().Fit().Settings();
  EXPECT_EQ(model.parameters.size(), 2U);
  EXPECT_EQ(model.ProcType, FitProcType::cfp_Newton);
  EXPECT_GE(model.NPoints,
            static_cast<std::int32_t>(std::max<std::size_t>(150, Series().Points().Size())));
}

TEST_F(FitDesktopTest, SeveralDataSetsAreFittedAtOnceInOneStep) {
  Start({TwoRuns()});
  TxyGraph& graph = ActiveDocument().Graph();
  std::map<std::size_t, double> told;  // of k, by DataSet, at the first step
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("h*exp(-k*x)+b");
    EXPECT_EQ(dialog.findChild<QLabel*>("CalculatorResult")->text(), "") << "nobody asked";
    Button("G&uess")->click();  // unknown names become parameters
    EXPECT_NEAR(graph.Series(0).Fit().Param(2).Value(), 0.1, 0.01);
    auto* data_sets = dialog.findChild<QListWidget*>("FittedTogether");
    ASSERT_EQ(data_sets->count(), 2);
    EXPECT_FALSE(data_sets->item(0)->flags() & Qt::ItemIsUserCheckable);
    data_sets->item(1)->setCheckState(Qt::Checked);
    auto* shared = dialog.findChild<QListWidget*>("SharedParameters");
    shared->findItems("k", Qt::MatchExactly).front()->setCheckState(Qt::Checked);
    EXPECT_EQ(
        dialog.findChild<QLabel*>("TogetherSummary")->text(),
        "Fit takes 2 DataSets at once. Shared by all: k; the other parameters have a value in "
        "each.");
    QObject::connect(&ActiveDocument(), &Document::fitStepped, form_.get(),
                     [&](const Document*, std::size_t series, const auto& values) {
                       told.emplace(series, values.at(1));
                     });
    Button("&Fit")->click();
  });
  const TCurFit& first = graph.Series(0).Fit();
  const TCurFit& second = graph.Series(1).Fit();
  ASSERT_TRUE(first.Result() && second.Result());
  const auto value = [](const TCurFit& fit, const std::string& name) {
    const std::vector<ParameterSettings> parameters = fit.Settings().parameters;
    return std::ranges::find(parameters, name, &ParameterSettings::Name)->Value;
  };
  EXPECT_NEAR(value(first, "k"), 0.1, 1e-3);
  EXPECT_EQ(value(first, "k"), value(second, "k"));
  EXPECT_NEAR(value(second, "h"), 40, 0.5);
  ASSERT_EQ(told.size(), 2U) << "values of every DataSet are told while the fit runs";
  EXPECT_EQ(told[0], told[1]) << "one value in all from the start";
  EXPECT_EQ(second.Result()->verdict.notes.front(),
            "Fitted at once with \"first\": k has one value in all.");
  ASSERT_TRUE(second.Result()->together);
  EXPECT_EQ(second.Result()->together, first.Result()->together);
  EXPECT_EQ(form_->findChild<QLabel*>("FitOfAllVerdict")->text().toStdString(),
            second.Result()->together->whole.verdict.summary);
  EXPECT_EQ(form_->findChild<QLabel*>("FitOfAllShared")->text(), "k has one value in all.");
  EXPECT_EQ(Table("FitOfAllMembers")->item(1, 0)->text(), "second");
  EXPECT_EQ(Table("FitOfAllMembers")->item(1, 1)->text(), KindOfVerdict(second.Result()->verdict));
  EXPECT_EQ(Table("FitFigures")->rowCount(), 3);  // its own: the others are those of all
  EXPECT_GT(Table("FitOfAllFigures")->rowCount(), 6);
  ActiveDocument().Edit("Look", [&](TxyGraph&) { graph.Series(1).Fit().Param(1).SetValue(2); });
  EXPECT_EQ(form_->findChild<QLabel*>("FitOutdated")->text(),
            "DataSet \"second\", fitted at once with this, changed since.");
  ActiveDocument().History().Undo();
  EXPECT_EQ(form_->findChild<QLabel*>("FitOutdated")->text(), "");
  ActiveDocument().History().Undo();
  EXPECT_FALSE(graph.Series(0).Fit().Result() || graph.Series(1).Fit().Result());
  EXPECT_EQ(graph.Series(1).Fit().Expression(), "");
  EXPECT_EQ(graph.Series(0).Fit().Expression(), "h*exp(-k*x)+b");
}

TEST_F(FitDesktopTest, EachOfSeveralDataSetsStartsATypedFormulaFromItsOwnPoints) {
  Start({TwoPeaks()});
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("h*exp(0-((x-p)/w)^2)");
    dialog.findChild<QListWidget*>("FittedTogether")->item(1)->setCheckState(Qt::Checked);
    Button("&Fit")->click();
  });
  const TxyGraph& graph = ActiveDocument().Graph();
  EXPECT_NEAR(graph.Series(0).Fit().Param(2).Value(), 20, 0.1);
  EXPECT_NEAR(graph.Series(1).Fit().Param(2).Value(), 480, 0.1);
  const Color first = graph.Series(0).ModelCurveColor();
  EXPECT_NE(first, graph.Series(1).ModelCurveColor());
  EXPECT_NE(first, FitSettings().CurveColor);
}

TEST_F(FitDesktopTest, FunctionsAreComparedAndTheBestIsTakenOver) {
  Start({TwoRuns()});
  Choose("&2 Decay");
  InEditor([&](QDialog& dialog) {
    auto* functions = dialog.findChild<QListWidget*>("ComparedFunctions");
    auto* compare = dialog.findChild<QPushButton*>("CompareNow");
    auto* formula = dialog.findChild<QLineEdit*>("ComparedFormula");
    auto* add = dialog.findChild<QPushButton*>("AddFormula");
    auto* remarks = dialog.findChild<QLabel*>("ComparisonRemarks");
    EXPECT_FALSE(compare->isEnabled());
    functions->item(1)->setCheckState(Qt::Checked);
    compare->click();
    EXPECT_TRUE(remarks->text().contains("Wrong File Format!"));
    functions->item(1)->setCheckState(Qt::Unchecked);
    formula->setText("a+(b*x");
    add->click();
    EXPECT_TRUE(remarks->text().startsWith("Unequal brackets"));
    formula->setText("a+b*x");
    add->click();
    compare->click();
    const QTableWidget& table = *Table("ComparisonTable");
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(table.item(0, 0)->text(), "This function");
    EXPECT_EQ(table.item(1, 0)->text(), "a+b*x");
    const int verdict = table.columnCount() - 1;
    EXPECT_EQ(table.item(1, verdict)->text(), "doubtful");
    EXPECT_TRUE(remarks->text().contains("\na+b*x: " + table.item(1, verdict)->toolTip() + "\n"));
    dialog.findChild<QPushButton*>("CopyComparison")->click();
    const QString copied = QApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith("function\tparameters\tAICc\tdifference\t"));
    EXPECT_TRUE(copied.endsWith(remarks->text().section('\n', 2) + "\n"));
    EXPECT_EQ(Series().Fit().Param(1).Value(), 300);
    dialog.findChild<QPushButton*>("UseCompared")->click();
    EXPECT_NEAR(Series().Fit().Param(1).Value(), 100, 2);
    dialog.accept();
  });
  EXPECT_EQ(Series().Fit().Expression(), Decay().Expression);
  EXPECT_NEAR(Series().Fit().Param(1).Value(), 100, 2);
}

TEST(ModelCheck, SaysWhatIsTheMatter) {
  struct Row {
    const char* expression;
    const char* error;
    std::vector<std::string> unknown;
  };
  const Row rows[] = {
      {"", "", {}},
      {"a*x", "", {}},
      {"a*x+b+c1", "", {"b", "c1"}},
      {"a*exp(-k*x)+b/k", "", {"k", "b"}},
      {"a*(x", "Unequal brackets", {}},
  };
  for (const Row& row : rows) {
    FitSettings model;
    model.Expression = row.expression;
    model.parameters.resize(1);
    model.parameters[0].Name = "a";
    const ModelCheck check = CheckModel(model);
    EXPECT_EQ(check.error.substr(0, check.error.find(',')), row.error);
    EXPECT_EQ(check.unknown_names, row.unknown) << row.expression;
    model.parameters.push_back(model.parameters[0]);
    EXPECT_EQ(CheckModel(model).error, "Parameter \"a\" Already Defined!");
  }
}

}  // namespace
}  // namespace tarnwick
