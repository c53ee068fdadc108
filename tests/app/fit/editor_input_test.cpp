// What is typed in the equation editor badly, or by half: told where it stands, and lost nowhere.
#include <QCheckBox>
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
    edited.Series(0).Fit().SetSettings(Decay(), true);
    edited.Series(1).Fit().SetSettings(other, true);
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
