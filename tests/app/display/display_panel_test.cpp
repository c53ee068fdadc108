// The display panel in its window: which parameters it shows, their values while they change, where it stands.
#include <QApplication>
#include <QDockWidget>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "app/display/indicator.h"
#include "app/display/value_editor.h"
#include "desk/commands/command_actions.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

class DisplayPanelTest : public testing::DesktopTest {
 protected:
  /// A model a + b·x with both parameters printed, as it is drawn.
  void DrawModel() {
    FitSettings model;
    model.Expression = "a+b*x";
    model.Status = FitStatus::cf_Function;
    model.parameters.resize(3);
    const auto set = [&](std::size_t i, const char* name, double value, bool printed) {
      model.parameters[i].Name = name;
      model.parameters[i].Value = value;
      model.parameters[i].Printed = printed;
    };
    set(0, "a", 1.5, true);
    set(1, "b", -2, true);
    set(2, "c", 3, false);
    model.parameters[0].Units = "V";
    ActiveDocument().Edit("Model", [&](TxyGraph& graph) {
      graph.CurrentSeries()->Fit().SetSettings(model, MarkModified::No);
    });
  }
  TCurFit& Model() { return ActiveDocument().Graph().CurrentSeries()->Fit(); }
  QList<TIndicator*> Indicators() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return form_->findChildren<TIndicator*>();
  }
  /// Whether the values become these.
  bool Shows(const QStringList& expected) {
    return QTest::qWaitFor([&] {
      QStringList values;
      for (const TIndicator* one : Indicators()) values.append(one->text());
      return values == expected;
    });
  }
  QDockWidget& Dock() { return *form_->findChild<QDockWidget*>("DisplayPanel"); }
  /// Clicks an indicator, types into the editor that opens, and leaves it where it stays open.
  void Enter(TIndicator& indicator, const char* text) {
    QTimer::singleShot(0, &indicator, [this, text] {
      auto* const editor = qobject_cast<ValueEditor*>(QApplication::activeModalWidget());
      ASSERT_NE(editor, nullptr);
      title_ = editor->windowTitle();
      auto& field = *editor->findChild<QLineEdit*>("Value");
      field.setText(text);
      QTest::keyClick(&field, Qt::Key_Return);
      left_open_ = editor->isVisible();
      if (left_open_) QTest::keyClick(editor, Qt::Key_Escape);
    });
    indicator.click();
  }

  QString title_;
  bool left_open_ = false;
};

TEST_F(DisplayPanelTest, ValuesAreSeenWhileAFitRuns) {
  Start({Example("reactor_log.tsv")});
  for (const int series : {1, 0}) {
    ActiveDocument().Graph().SetCurrentSeriesIndex(series);
    DrawModel();
  }
  EXPECT_TRUE(Shows({"1.5", "-2", "1.5", "-2"}));
  emit ActiveDocument().fitStepped(&ActiveDocument(), 0, {7, 8, 9});
  emit ActiveDocument().fitStepped(&ActiveDocument(), 1, {4, 5, 6});
  EXPECT_TRUE(Shows({"7", "8", "4", "5"})) << "both of a fit of several";
  EXPECT_EQ(Model().Param(1).Value(), 1.5) << "the model waits for the end";
  Model().Change(MarkModified::Yes);
  EXPECT_TRUE(Shows({"1.5", "-2", "1.5", "-2"}));
}

TEST_F(DisplayPanelTest, ShowsPrintedParametersOfModelsThatAreSwitchedOn) {
  Start({Example("decay.dat")});
  EXPECT_TRUE(Indicators().empty());
  DrawModel();
  EXPECT_TRUE(Shows({"1.5", "-2"}));
  EXPECT_EQ(Indicators()[1]->accessibleName(), "b = -2, Graph_1.Rate [1/s]");
  Model().Param(2).SetValue(1234567);
  EXPECT_TRUE(Shows({"1.5", "1.23457E6"}));
  Model().SetStatus(FitStatus::cf_None);
  EXPECT_TRUE(Indicators().empty());
}

TEST_F(DisplayPanelTest, AGraphThatClosesTakesItsIndicatorsAlong) {
  Start({Example("decay.dat")});
  DrawModel();
  Run("FileNew1");
  EXPECT_EQ(Indicators().size(), 2);
  form_->GraphWindows().front()->GetDocument().History().SetChanged(false);
  form_->GraphWindows().front()->GetDocument().Files().GiveUp();
  form_->GraphWindows().front()->close();
  EXPECT_TRUE(Indicators().empty());
}

TEST_F(DisplayPanelTest, AValueEnteredIsOneStep) {
  Start({Example("decay.dat")});
  DrawModel();
  Enter(*Indicators()[0], "3,25");
  EXPECT_EQ(title_, "a (V) ");
  EXPECT_FALSE(left_open_);
  EXPECT_EQ(Model().Param(1).Value(), 3.25);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Change Parameter a");
  Run("EditUndo1");
  EXPECT_EQ(Model().Param(1).Value(), 1.5);

  Enter(*Indicators()[1], "two");
  EXPECT_EQ(title_, "b () ");
  EXPECT_TRUE(left_open_);
  EXPECT_EQ(Model().Param(2).Value(), -2);

  FitSettings tied = Model().Settings();
  tied.parameters[1].Tie = "2*a";
  Model().SetSettings(tied, MarkModified::No);
  Enter(*Indicators()[1], "7");
  EXPECT_EQ(TakeTold().size(), 1u);
  EXPECT_EQ(Model().Param(2).Value(), -2);
}

TEST_F(DisplayPanelTest, StandsWhereItStood) {
  struct Row {
    const char* align;
    Qt::DockWidgetArea area;
    bool floats;
    const char* caption;  // of moving
  };
  constexpr Row kRows[] = {{"1", Qt::TopDockWidgetArea, false, "&Move Displays"},
                           {"2", Qt::BottomDockWidgetArea, false, "&Move Displays"},
                           {"4", Qt::RightDockWidgetArea, false, "&Move Displays"},
                           {"5", Qt::LeftDockWidgetArea, false, "&Move Displays"},
                           {"none", Qt::LeftDockWidgetArea, false, "&Move Displays"},
                           {"0", Qt::LeftDockWidgetArea, true, "&Fix Displays"}};
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.align);
    TearDown();
    folder_.Write("settings.ini", std::string("[Tarnwick]\nDisplayAlign=") + row.align +
                                      "\nDisplayLeft=60\nDisplayTop=70\nDisplayWidth=150\n");
    SetUp();
    Start({});
    EXPECT_EQ(form_->dockWidgetArea(&Dock()), row.area);
    EXPECT_EQ(Dock().isFloating(), row.floats);
    EXPECT_EQ(form_->Actions().ActionOf("WindowMoveDisplay1")->text(), row.caption);
    EXPECT_EQ(Dock().pos() == QPoint(60, 70), row.floats);
    const bool across = row.area == Qt::TopDockWidgetArea || row.area == Qt::BottomDockWidgetArea;
    EXPECT_EQ(Dock().width() == 150, !across);
  }
  Run("WindowMoveDisplay1");
  EXPECT_FALSE(Dock().isFloating());
  EXPECT_EQ(form_->Actions().ActionOf("WindowMoveDisplay1")->statusTip(), "UnDock Display Panel");
  Run("WindowShowDisplay1");
  EXPECT_EQ(form_->Actions().ActionOf("WindowShowDisplay1")->text(), "Show &Displays");
  TearDown();
  SetUp();
  Start({});
  EXPECT_FALSE(Dock().isVisible());
}

}  // namespace
}  // namespace tarnwick
