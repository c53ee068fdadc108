// What is typed in the equation editor badly, or by half: told where it stands, and lost nowhere.
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <map>

#include "fit_desktop_fixture.h"

namespace tarnwick {
namespace {

TEST_F(FitDesktopTest, ReturnTakesWhatIsTypedAndLeavesTheEditorOpen) {
  OpenFitted();
  InEditor([&](QDialog& dialog) {
    auto* pages = dialog.findChild<QTabWidget*>();
    const struct {
      int page;
      const char* field;
      const char* typed;
    } rows[] = {{0, "CalculatorX", "7"},
                {0, "VariableEdit", "x"},
                {1, "FitTolerance", "1e-9"},
                {1, "FitNPoints", "77"},
                {3, "ComparedFormula", "a+b*x"}};
    for (const auto& row : rows) {
      pages->setCurrentIndex(row.page);
      auto* field = dialog.findChild<QWidget*>(row.field);
      field->setFocus();
      QTest::keySequence(field, QKeySequence::SelectAll);
      QTest::keyClicks(field, row.typed);
      QTest::keyClick(field, Qt::Key_Return);
      EXPECT_TRUE(dialog.isVisible()) << row.field;
    }
    EXPECT_EQ(Series().Fit().Settings().Tolerance, 1e-9);
    EXPECT_EQ(Series().Fit().Settings().NPoints, 77);
    const auto* functions = dialog.findChild<QListWidget*>("ComparedFunctions");
    EXPECT_EQ(functions->item(functions->count() - 1)->text(), "a+b*x") << "as by Add";
    auto* formula = dialog.findChild<QLineEdit*>("ComparedFormula");
    EXPECT_EQ(formula->text(), "");
    formula->setText("c*x");
    dialog.findChild<QPushButton*>("CompareNow")->click();
    EXPECT_EQ(Table("ComparisonTable")->rowCount(), 3) << "what was typed takes part";
    pages->setCurrentIndex(0);
    auto* parameters = dialog.findChild<QTableWidget*>("ParameterTable");
    parameters->setFocus();
    parameters->setCurrentCell(0, 1);
    const auto cells = parameters->viewport()->findChildren<QLineEdit*>();
    ASSERT_FALSE(cells.empty());
    QLineEdit* const cell = cells.last();  // one left may still be there
    cell->selectAll();
    QTest::keyClicks(cell, "5");
    QTest::keyClick(cell, Qt::Key_Return);
    QCoreApplication::processEvents();  // which takes the cell over
    QTest::keyClick(parameters, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(Series().Fit().Param(1).Value(), 5);
    auto* remove = dialog.findChild<QPushButton*>("DeleteParameter");
    remove->setFocus();
    QTest::keyClick(remove, Qt::Key_Return);
    EXPECT_EQ(parameters->rowCount(), 2) << "the button with the focus";
    EXPECT_TRUE(dialog.isVisible());
  });
}

TEST_F(FitDesktopTest, FitTakesTheNamesOfATypedFormulaForParameters) {
  Start({Example("decay.dat")});
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("h*exp(-k*x)+b");
    Button("&Fit")->click();
    EXPECT_FALSE(dialog.isVisible());
  });
  ASSERT_TRUE(Series().Fit().Result());
  const FitVerdict& verdict = Series().Fit().Result()->verdict;
  EXPECT_TRUE(verdict.trustworthy);
  EXPECT_EQ(std::ranges::count(verdict.notes, "Taken as parameters: h, k and b."), 1);
  InEditor([&](QDialog& dialog) {  // values that somebody chose are not guessed anew
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("h*exp(-k*x)+b+c*x");
    Button("&Fit")->click();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(TakeTold(), std::vector<std::string>{"c is a parameter now and starts at 1. Press "
                                                   "Fit again, or choose other values before."});
    EXPECT_EQ(dialog.findChild<QTableWidget*>("ParameterTable")->rowCount(), 4);
  });
}

TEST_F(FitDesktopTest, TheNameOfXIsTakenForTheVariableOfAFormulaThatLacksItsOwn) {
  Start({TwoRuns()});  // over t
  const char* const typed = "A*exp(-t/tau)+c";
  InEditor([&](QDialog& dialog) {
    auto* expression = dialog.findChild<QPlainTextEdit*>("ExpressionEdit");
    const auto* message = dialog.findChild<QLabel*>("ExpressionMessage");
    const auto* parameters = dialog.findChild<QTableWidget*>("ParameterTable");
    auto* variable = dialog.findChild<QLineEdit*>("VariableEdit");
    auto* take = dialog.findChild<QPushButton*>("TakeVariable");
    expression->setPlainText("q*exp(-time/tau)");
    EXPECT_EQ(message->text(),
              "Neither the variable nor a parameter: q, time, tau\n"
              "The formula has no x: its curve is the same at every X.");
    EXPECT_TRUE(take->isHidden());
    expression->setPlainText(typed);
    EXPECT_EQ(message->text(),
              "Neither the variable nor a parameter: A, t, tau, c\n"
              "The formula has no x. Is t the variable?");
    EXPECT_EQ(take->text(), "&Yes, t Is the Variable");
    take->click();
    EXPECT_EQ(variable->text(), "t");
    EXPECT_EQ(message->text(), "Neither the variable nor a parameter: A, tau, c");
    EXPECT_TRUE(take->isHidden());
    variable->setText("x");
    Button("Ma&ke Parameters")->click();
    EXPECT_EQ(parameters->rowCount(), 3);
    EXPECT_EQ(variable->text(), "t");
    EXPECT_EQ(message->text(), "t is taken for the variable, as X is named.");
    variable->setText("tau");
    EXPECT_EQ(message->text(),
              "\"tau\" is the variable and a parameter: delete the parameter, or give one another "
              "name.");
    EXPECT_FALSE(Button("&Fit")->isEnabled());
    EXPECT_FALSE(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
    variable->setText("x");
    expression->setPlainText("A+c*x+t");
    Button("Ma&ke Parameters")->click();
    EXPECT_EQ(parameters->rowCount(), 4) << "where x stands, t is a parameter";
    expression->setPlainText("A+c*t");
    take->click();
    EXPECT_EQ(parameters->rowCount(), 3) << "and is none as soon as it is the variable";
    EXPECT_EQ(variable->text(), "t");
  });
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText(typed);
    Button("&Fit")->click();
  });
  ASSERT_TRUE(Series().Fit().Result());
  EXPECT_GT(Series().Fit().Result()->statistics.r_squared, 0.99);
  const FitVerdict& verdict = Series().Fit().Result()->verdict;
  EXPECT_EQ(std::ranges::count(verdict.notes, "t is taken for the variable, as X is named."), 1);
}

TEST_F(FitDesktopTest, ComparedFormulasHaveTheEditorsVariableOrTheirOwn) {
  Start({TwoRuns()});
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QLineEdit*>("VariableEdit")->setText("t");
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("A*exp(-t/tau)+c");
    Button("Ma&ke Parameters")->click();
    dialog.findChild<QTabWidget*>()->setCurrentIndex(3);
    const auto* remarks = dialog.findChild<QLabel*>("ComparisonRemarks");
    const struct {
      const char* formula;
      const char* told;  // what it begins with
    } rows[] = {{"a+b*t", "Choose two functions"},
                {"a+b*x", "x is the variable of a+b*x."},
                {"a+b*q", "The formula has no t: its curve is the same at every X."}};
    for (const auto& row : rows) {
      dialog.findChild<QLineEdit*>("ComparedFormula")->setText(row.formula);
      dialog.findChild<QPushButton*>("AddFormula")->click();
      EXPECT_TRUE(remarks->text().startsWith(row.told)) << remarks->text().toStdString();
    }
    dialog.findChild<QPushButton*>("CompareNow")->click();
    const QTableWidget* table = Table("ComparisonTable");
    std::map<QString, QString> aicc;
    for (int i = 0; i < table->rowCount(); ++i)
      aicc[table->item(i, 0)->text()] = table->item(i, 2)->text();
    EXPECT_EQ(aicc["a+b*t"], aicc["a+b*x"]);
    EXPECT_NE(aicc["a+b*t"], aicc["a+b*q"]);
    EXPECT_TRUE(remarks->text().contains(", but the model does not depend on X."));
  });
}

TEST_F(FitDesktopTest, AFormulaIsComparedAsItIsTyped) {
  Start({TwoRuns()});
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("a+b*x");
    dialog.findChild<QTabWidget*>()->setCurrentIndex(3);
    dialog.findChild<QLineEdit*>("ComparedFormula")->setText("c+d*x");
    dialog.findChild<QPushButton*>("CompareNow")->click();
    const QTableWidget* table = Table("ComparisonTable");
    ASSERT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->item(0, 2)->text(), table->item(1, 2)->text());
    EXPECT_FALSE(dialog.findChild<QLabel*>("ComparisonRemarks")->text().contains("did not start"));
  });
}

TEST_F(FitDesktopTest, EscapeAsksBeforeItThrowsAwayWhatWasTyped) {
  OpenFitted();
  const FitSettings before = Series().Fit().Settings();
  const std::string question = "Throw away what was changed in the Equation Editor?";
  InEditor([&](QDialog& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible()) << "nothing was changed";
  });
  InEditor([&](QDialog& dialog) {
    auto* expression = dialog.findChild<QPlainTextEdit*>("ExpressionEdit");
    expression->setPlainText("A*exp(-k*x");  // which cannot be applied either
    Expect(question, Answer::No);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    expression->setPlainText("A*exp(-k*x)");
    Expect(question, Answer::Yes);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(Series().Fit().Settings(), before);
  InEditor([&](QDialog& dialog) {
    dialog.findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("A*exp(-k*x)");
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Apply)->click();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible()) << "it was applied";
  });
  EXPECT_EQ(Series().Fit().Expression(), "A*exp(-k*x)");
}

TEST_F(FitDesktopTest, WhatCannotBeFittedIsGoneOnWithInTheEditor) {
  OpenFitted();
  bool came_back = false;
  QTimer watch;
  QTimer::singleShot(0, form_.get(), [&] {
    auto* dialog = form_->findChild<QDialog*>("TfrmCalc");
    QObject::connect(&watch, &QTimer::timeout, dialog, [&, dialog] {
      if (prompt_->told.empty() || !dialog->isVisible()) return;
      came_back = true;
      EXPECT_TRUE(TakeTold().at(0).starts_with("The fit did not start: "));
      EXPECT_EQ(dialog->findChild<QPlainTextEdit*>("ExpressionEdit")->toPlainText(), "A*ln(k-x)+B");
      dialog->reject();
    });
    watch.start(10);
    dialog->findChild<QPlainTextEdit*>("ExpressionEdit")->setPlainText("A*ln(k-x)+B");
    Button("&Fit")->click();
  });
  Run("editFunction1");
  EXPECT_TRUE(came_back);
}

TEST_F(FitDesktopTest, BoundsAndTiesThatCannotHoldSayWhyAndChangeNothing) {
  OpenFitted();
  const FitSettings before = Series().Fit().Settings();
  struct Cell {
    int row;
    int column;
    const char* text;
  };
  const struct {
    std::vector<Cell> cells;
    const char* told;
  } rows[] = {
      {{{2, 4, "1"}, {2, 5, "-1"}}, "The bounds of \"B\" are crossed: 1 is above -1."},
      {{{2, 4, "1e6"}}, "\"B\" starts at "},
      {{{2, 4, "1"}, {2, 5, "1"}}, "The bounds of \"B\" leave no room: hold it fixed instead."},
      {{{0, 6, "k"}, {1, 6, "2*A"}}, "The tie of \"A\" goes round in a circle."},
      {{{0, 6, "A+1"}}, "The tie of \"A\" goes round in a circle."},
      {{{0, 6, "2*q"}}, "\"A\" is tied to \"q\", which is no parameter."},
      {{{0, 6, "2*(k"}}, "The tie of \"A\" cannot be read: Unequal brackets."},
      {{{0, 4, "low"}}, "Low of \"A\" is no number."}};
  InEditor([&](QDialog& dialog) {
    auto* parameters = dialog.findChild<QTableWidget*>("ParameterTable");
    const auto* message = dialog.findChild<QLabel*>("ExpressionMessage");
    for (const auto& row : rows) {
      std::vector<QString> were;
      for (const Cell& cell : row.cells) {
        were.push_back(parameters->item(cell.row, cell.column)->text());
        parameters->item(cell.row, cell.column)->setText(cell.text);
      }
      EXPECT_TRUE(message->text().startsWith(row.told)) << message->text().toStdString();
      EXPECT_FALSE(Button("&Fit")->isEnabled()) << row.told;
      for (std::size_t i = row.cells.size(); i-- > 0;)
        parameters->item(row.cells[i].row, row.cells[i].column)->setText(were[i]);
      EXPECT_EQ(message->text(), "") << row.told;
    }
  });
  EXPECT_EQ(Series().Fit().Settings(), before);
}

TEST_F(FitDesktopTest, AParameterThatAModelLacksIsNotShared) {
  Start({TwoRuns()});
  TxyGraph& graph = ActiveDocument().Graph();
  FitSettings other;
  other.Expression = "c*x";
  other.parameters.push_back(Decay().parameters.front());
  other.parameters.front().Name = "c";
  ActiveDocument().Edit("Models", [&](TxyGraph& edited) {
    edited.Series(0).Fit().SetSettings(Decay(), MarkModified::Yes);
    edited.Series(1).Fit().SetSettings(other, MarkModified::Yes);
  });
  QTimer watch;
  QTimer::singleShot(0, form_.get(), [&] {
    auto* dialog = form_->findChild<QDialog*>("TfrmCalc");
    QObject::connect(&watch, &QTimer::timeout, dialog, [this, dialog] {
      if (!prompt_->told.empty() && dialog->isVisible()) dialog->reject();
    });
    watch.start(10);
    dialog->findChild<QListWidget*>("FittedTogether")->item(1)->setCheckState(Qt::Checked);
    dialog->findChild<QCheckBox*>("SameFunction")->setChecked(false);
    auto* shared = dialog->findChild<QListWidget*>("SharedParameters");
    shared->findItems("k", Qt::MatchExactly).front()->setCheckState(Qt::Checked);
    Button("&Fit")->click();
  });
  Run("editFunction1");
  EXPECT_EQ(TakeTold(), std::vector<std::string>{
                            "The model of DataSet \"second\" has no parameter \"k\" to share."});
  EXPECT_EQ(graph.Series(0).Fit().Settings().parameters, Decay().parameters);
  EXPECT_EQ(graph.Series(1).Fit().Settings(), other);
}

TEST_F(FitDesktopTest, SettingsThatCannotBeUsedSayWhyBesideThem) {
  Start({Example("decay.dat")});
  Choose("&2 Decay");
  InEditor([&](QDialog& dialog) {
    const auto* trouble = dialog.findChild<QLabel*>("FitSettingsTrouble");
    auto* scale = dialog.findChild<QLineEdit*>("FitLossScale");
    const QString tip = scale->toolTip();
    scale->setText("-1");
    dialog.findChild<QLineEdit*>("FitTolerance")->setText("0");
    EXPECT_EQ(trouble->text(),
              "Tolerance: This is no number above 0.\nLoss scale: This is no number from 0 on.");
    EXPECT_FALSE(Button("&Fit")->isEnabled());
    scale->setText("2");
    EXPECT_EQ(scale->toolTip(), tip);
    dialog.findChild<QLineEdit*>("FitTolerance")->setText("1e-6");
    for (auto* margin : dialog.findChildren<QCheckBox*>())
      if (margin->text().endsWith("gin")) margin->setChecked(true);
    for (auto* margin : dialog.findChildren<QLineEdit*>())
      if (margin->accessibleName().endsWith(" Margin"))
        margin->setText(margin->accessibleName().startsWith("Left") ? "9" : "3");
    EXPECT_EQ(trouble->text(),
              "Right Margin: It lies left of the left margin: no point is between them.");
    EXPECT_TRUE(Button("&Fit")->isEnabled());
    dialog.reject();
  });
}

}  // namespace
}  // namespace tarnwick
