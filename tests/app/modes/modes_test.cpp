// Mouse modes, modifier keys and the keyboard on a graph's canvas, by the events that a user brings about.
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <functional>

#include "app/modes/delete_point_mode.h"
#include "app/modes/draw_mark_mode.h"
#include "app/modes/insert_point_mode.h"
#include "app/modes/move_point_mode.h"
#include "app/modes/rest_mode.h"
#include "app/modes/trace_mode.h"
#include "desk/commands/command_actions.h"
#include "desk/document/finish_look.h"
#include "desktop_fixture.h"
#include "graph/edit/mark_edit.h"
#include "graph/edit/point_edit.h"

namespace tarnwick {
namespace {

constexpr std::int32_t kPoint = 4;  // the one clicked at

class ModesTest : public testing::DesktopTest {
 protected:
  /// A window with a DataSet made by hand: points (1, 10), (2, 20), ... (40, 400).
  void StartWithPoints() {
    Start({});
    Run("FileNew1");
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName("Hand");
    for (int i = 1; i <= 40; ++i) series->AddPoint(i, 10 * i);
    Graph().AddSeries(std::move(series));
    Graph().AddSeries(std::make_unique<TSeries>());
    FinishLook(ActiveDocument(), ActiveCanvas().size());
    ActiveCanvas().grab();  // lays the picture out
  }
  TxyGraph& Graph() { return ActiveDocument().Graph(); }
  const TSeries& Data() { return Graph().Series(0); }
  QPoint Place(double x, double y) {
    return QPointF(Graph().Axis(AxisId::X).Scale().Position(x),
                   Graph().Axis(AxisId::Y).Scale().Position(y))
        .toPoint();
  }
  /// Presses, moves in two steps and lets go; a click when both places are the same.
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mousePress(&ActiveCanvas(), Qt::LeftButton, modifiers, from);
    for (const QPoint& place : {(from + to) / 2, to}) {
      QMouseEvent move(QEvent::MouseMove, place, ActiveCanvas().mapToGlobal(place), Qt::NoButton,
                       Qt::LeftButton, modifiers);
      QCoreApplication::sendEvent(&ActiveCanvas(), &move);
    }
    QTest::mouseRelease(&ActiveCanvas(), Qt::LeftButton, modifiers, to);
    ActiveCanvas().grab();
  }
  void Press(int key) { QTest::keyClick(&ActiveCanvas(), static_cast<Qt::Key>(key)); }
  /// True when Esc goes to the canvas and not to the command that closes the window.
  bool KeepsEsc() {
    QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(&ActiveCanvas(), &event);
    return event.isAccepted();
  }
};

TEST_F(ModesTest, ModesEditThroughNamedSteps) {
  StartWithPoints();
  struct Row {
    const char* command;
    QPoint from;
    QPoint to;
    std::function<std::string()> question;  // empty: none is asked
    Answer answer;
    std::string undo;  // name of the step afterwards
    ModeMaker mode_afterwards;
    std::function<bool()> holds;
  };
  const QPoint at = Place(kPoint, 10 * kPoint);
  const QPoint away = Place(7.5, 200);
  const auto value = [this](QPoint place) {
    return PlotPoint{Graph().Axis(AxisId::X).Scale().ValueAt(place.x()),
                     Graph().Axis(AxisId::Y).Scale().ValueAt(place.y())};
  };
  const auto deleting = [&] { return DeletePointQuestion(Graph(), Data(), kPoint); };
  const auto moving = [&] { return MovePointQuestion(Graph(), Data(), kPoint, value(away)); };
  const auto points = [this] { return Data().PointCount(); };
  const auto mark = [this] { return Graph().Marks().All().at(0); };
  const std::function<std::string()> none;
  const Row rows[] = {
      {"EditDelPoint1", at, at, deleting, Answer::No, "", MakeMode<DeletePointMode>,
       [&] { return points() == 40; }},
      {"EditDelPoint1", at, at, deleting, Answer::Yes, "Delete Point", MakeMode<DeletePointMode>,
       [&] { return points() == 39 && !GetY(Data(), kPoint); }},
      {"EditMovePoint1", at, away, moving, Answer::No, "", MakeMode<MovePointMode>,
       [&] { return GetY(Data(), kPoint) == 10 * kPoint; }},
      {"EditMovePoint1", at, away, moving, Answer::Yes, "Move Point", MakeMode<MovePointMode>,
       [&] { return GetY(Data(), kPoint) == value(away).y && points() == 40; }},
      {"EditMovePoint1", at, at, none, Answer::No, "", MakeMode<MovePointMode>,
       [&] { return ActiveCanvas().Picked()->number == kPoint; }},
      {"editInsertPoint1", away, away, none, Answer::No, "Insert Point", MakeMode<InsertPointMode>,
       [&] { return points() == 41 && GetY(Data(), 41) == value(away).y; }},
      {"MarkVert1", away, away, none, Answer::No, "Draw Vertical Mark", MakeMode<RestMode>,
       [&] { return mark().type == MarkType::Vertical && mark().x1 == value(away).x; }},
      {"MarkHor1", away, away, none, Answer::No, "Draw Horizontal Mark", MakeMode<RestMode>,
       [&] { return mark().type == MarkType::Horizontal && mark().y1 == value(away).y; }},
      {"MarkPoint1", away, away, none, Answer::No, "Draw Point Mark", MakeMode<RestMode>,
       [&] { return mark().type == MarkType::Point && mark().caption == "1"; }},
      {"MarkLine1", at, away, none, Answer::No, "Draw Linear Mark", MakeMode<RestMode>,
       [&] { return mark().x1 == value(at).x && mark().y2 == value(away).y; }},
      {"MarkArrow1", at, away, none, Answer::No, "Draw Arrow", MakeMode<RestMode>,
       [&] { return mark().type == MarkType::Arrow && mark().y2 == value(away).y; }},
      {"MarkRectangle1", away, at, none, Answer::No, "Draw Rectangle", MakeMode<RestMode>,
       [&] { return mark().type == MarkType::Rectangle && mark().x2 == value(at).x; }},
      {"MarkText1", away, away, none, Answer::No, "Write Text", MakeMode<RestMode>,
       [&] { return mark().type == MarkType::Text && mark().caption == "Peak 1"; }},
      {"MarkLine1", at, at, none, Answer::No, "", MakeDrawMarkMode<MarkType::Line>,
       [&] { return Graph().Marks().All().empty(); }}};  // the last one waits for the second click
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.command) + " -> " + row.undo);
    Run(row.command);
    if (row.question) Expect(row.question(), row.answer);
    QTimer::singleShot(0, [] {
      auto* asked = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
      if (asked == nullptr) return;
      asked->setTextValue(" Peak  1 ");
      asked->accept();
    });
    Drag(row.from, row.to);
    EXPECT_EQ(ActiveDocument().History().UndoName(), row.undo);
    EXPECT_TRUE(ActiveCanvas().IsOn(row.mode_afterwards));
    EXPECT_TRUE(row.holds());
    if (!ActiveCanvas().AtRest()) Press(Qt::Key_Escape);
    EXPECT_TRUE(ActiveCanvas().AtRest());
    ActiveDocument().History().Undo();
    ActiveCanvas().grab();
    EXPECT_EQ(points(), 40);
    EXPECT_TRUE(Graph().Marks().All().empty());
  }
}

TEST_F(ModesTest, PointsAreOnlyInsertedByHandIntoWhatWasMadeByHand) {
  StartWithPoints();
  Graph().Series(0).Source().DataSource = DataSourceKind::Text;
  Run("editInsertPoint1");
  EXPECT_EQ(TakeTold(),
            std::vector<std::string>{"This option is valid only for dataSet with manual source"});
  EXPECT_TRUE(ActiveCanvas().AtRest());
}

TEST_F(ModesTest, AWindowIsZoomedByCommandAndByShift) {
  StartWithPoints();
  const TAxis& x = Graph().Axis(AxisId::X);
  const TAxis& y = Graph().Axis(AxisId::Y);
  struct Row {
    const char* command;
    Qt::KeyboardModifiers modifiers;
    QPoint from;
    QPoint to;
    bool x_zooms;
    bool y_zooms;
  };
  const QPoint low = Place(10, 100);
  const QPoint high = Place(20, 300);
  const Row rows[] = {
      {"GraphZoom1", Qt::NoModifier, low, high, true, true},
      {nullptr, Qt::ShiftModifier, high, low, true, true},
      {nullptr, Qt::ShiftModifier, low, {high.x(), low.y() + 2}, true, false},
      {nullptr, Qt::ShiftModifier, low, {low.x() + 2, high.y()}, false, true},
      {nullptr, Qt::ShiftModifier, low, low + QPoint(2, 2), false, false},
  };
  for (const Row& row : rows) {
    const double x_min = x.Min();
    const double y_max = y.Max();
    if (row.command) {
      Run(row.command);
      EXPECT_EQ(StatusText("Note"), "Drag Across the Area to Enlarge");
    }
    Drag(row.from, row.to, row.modifiers);
    EXPECT_TRUE(ActiveCanvas().AtRest());
    EXPECT_NEAR(x.Min(), row.x_zooms ? 10 : x_min, 0.1);
    EXPECT_NEAR(y.Max(), row.y_zooms ? 300 : y_max, 1.5);
    EXPECT_FALSE(ActiveDocument().History().CanUndo());  // zooming is no step
    if (row.x_zooms || row.y_zooms) Run("GraphResetZoom1");
    ActiveCanvas().grab();
    EXPECT_DOUBLE_EQ(x.Min(), x_min);
    EXPECT_DOUBLE_EQ(y.Max(), y_max);
  }
}

TEST_F(ModesTest, CtrlMovesLegendAndMarks) {
  StartWithPoints();
  Mark mark_at_20;
  mark_at_20.x1 = 20;
  const std::int32_t id = AddMark(Graph(), mark_at_20);
  ActiveCanvas().grab();
  const QRectF legend = ActiveCanvas().Layout().legend->frame;
  Drag(legend.center().toPoint(), legend.center().toPoint() + QPoint(60, 90), Qt::ControlModifier);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Move Legend");
  const QRectF moved = ActiveCanvas().Layout().legend->frame;
  EXPECT_NEAR(moved.left(), legend.left() + 60, 1);
  EXPECT_NEAR(moved.top(), legend.top() + 90, 1);

  const QPoint mark = Place(20, 60);
  Drag(mark, Place(30, 60), Qt::ControlModifier);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Move Mark");
  EXPECT_NEAR(Graph().Marks().FindMark(id)->x1, 30, 0.1);
  ActiveDocument().History().Undo();
  ActiveDocument().History().Undo();
  EXPECT_EQ(Graph().Marks().FindMark(id)->x1, 20);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
  ActiveCanvas().grab();

  // An end of a line is moved alone, keys move the current mark.
  Mark line;
  line.type = MarkType::Line;
  line.x1 = 25, line.y1 = 300, line.x2 = 35, line.y2 = 100;
  const std::int32_t line_id = AddMark(Graph(), line);
  ActiveCanvas().grab();
  Drag(Place(35, 100), Place(38, 150), Qt::ControlModifier);
  const auto moved_line = [&] { return *Graph().Marks().FindMark(line_id); };
  EXPECT_EQ(moved_line().x1, 25);
  EXPECT_EQ(moved_line().y1, 300);
  EXPECT_NEAR(moved_line().x2, 38, 0.1);
  EXPECT_NEAR(moved_line().y2, 150, 1);
  ActiveDocument().History().Undo();
  for (int i = 0; i < 2; ++i) {
    QTest::keyClick(&ActiveCanvas(), Qt::Key_Right, Qt::ControlModifier);
  }
  EXPECT_NEAR(Place(moved_line().x1, 300).x(), Place(25, 300).x() + 2, 1);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Move Mark " + std::to_string(line_id));
  ActiveDocument().History().Undo();
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
  DeleteMark(Graph(), line_id);
  ActiveCanvas().grab();

  QTest::mousePress(&ActiveCanvas(), Qt::LeftButton, Qt::ControlModifier, mark);
  MoveMouse(Place(25, 60), Qt::LeftButton);
  EXPECT_NEAR(Graph().Marks().FindMark(id)->x1, 25, 0.1);
  Press(Qt::Key_Escape);  // puts it back
  EXPECT_EQ(Graph().Marks().FindMark(id)->x1, 20);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
}

TEST_F(ModesTest, ATraceStaysUntilEscAndChangesNothing) {
  StartWithPoints();
  Drag(Place(5, 100), Place(15, 300), Qt::AltModifier);
  EXPECT_TRUE(ActiveCanvas().AtRest());
  Run("GraphTrace1");
  Drag(Place(5, 300), Place(15, 100));
  Drag(Place(20, 300), Place(30, 100));
  EXPECT_TRUE(ActiveCanvas().IsOn(MakeMode<TraceMode>));
  EXPECT_EQ(ActiveCanvas().Traces().Count(), 3u);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
  const QColor ink(0xc0, 0x39, 0x2b);
  EXPECT_GT(testing::PixelsOf(ActiveCanvas().grab().toImage(), ink), 300);
  Press(Qt::Key_Escape);  // ends the mode
  EXPECT_EQ(ActiveCanvas().Traces().Count(), 3u);
  EXPECT_TRUE(KeepsEsc());
  Press(Qt::Key_Escape);  // wipes off
  EXPECT_TRUE(ActiveCanvas().Traces().IsEmpty());
  EXPECT_FALSE(KeepsEsc());  // it closes the window again
}

TEST_F(ModesTest, KeysWalkFromPointToPointAndAreSpoken) {
  StartWithPoints();
  Drag(Place(4.2, 300), Place(4.2, 300));
  ASSERT_TRUE(ActiveCanvas().Picked());
  EXPECT_EQ(ActiveCanvas().Picked()->number, 4);
  struct Row {
    int key;
    int number;
  };
  const Row rows[] = {{Qt::Key_Right, 5}, {Qt::Key_PageDown, 15}, {Qt::Key_Left, 14},
                      {Qt::Key_End, 40},  {Qt::Key_Right, 40},    {Qt::Key_PageUp, 30},
                      {Qt::Key_Home, 1},  {Qt::Key_Left, 1}};
  QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&ActiveCanvas());
  ASSERT_NE(spoken, nullptr);
  for (const Row& row : rows) {
    Press(row.key);
    const std::string text = "pnt#" + std::to_string(row.number) +
                             "  X,Y: " + std::to_string(row.number) + ", " +
                             std::to_string(10 * row.number);
    EXPECT_EQ(StatusText("ReadOut").toStdString(), "Mouse X,Y:   ; " + text);
    EXPECT_EQ(spoken->text(QAccessible::Value).toStdString(), text);
    EXPECT_EQ(spoken->text(QAccessible::Name).toStdString(), "Graph Graph_1, Hand " + text);
  }
  EXPECT_EQ(spoken->role(), QAccessible::Chart);

  Graph().Series(0).SetY(1, 7);
  EXPECT_EQ(StatusText("ReadOut"), "Mouse X,Y:   ; pnt#1  X,Y: 1, 7") << "was edited elsewhere";
  EXPECT_EQ(spoken->text(QAccessible::Name), "Graph Graph_1, Hand pnt#1  X,Y: 1, 7");
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(&ActiveCanvas(), &leave);
  EXPECT_EQ(StatusText("ReadOut"), "Mouse X,Y:   ; pnt#1  X,Y: 1, 7");

  // A point out of sight is brought into it, one that is deleted is picked no more.
  Drag(Place(10, 100), Place(20, 300), Qt::ShiftModifier);
  Press(Qt::Key_End);
  EXPECT_GE(Graph().Axis(AxisId::X).Max(), 40);
  EXPECT_NEAR(Graph().Axis(AxisId::X).Max() - Graph().Axis(AxisId::X).Min(), 10, 0.2);
  Graph().Series(0).DeletePoint(40);
  EXPECT_FALSE(ActiveCanvas().Picked());
  Press(Qt::Key_Left);
  EXPECT_EQ(ActiveCanvas().Picked()->number, 39);
  Press(Qt::Key_Escape);
  EXPECT_FALSE(ActiveCanvas().Picked());
  EXPECT_EQ(spoken->text(QAccessible::Name), "Graph Graph_1");
}

TEST_F(ModesTest, PointsAreMovedAndDeletedWithoutAMouse) {
  StartWithPoints();
  PointErrors errors;
  errors.y = {ErrorKind::Percent, 50};
  Graph().Series(0).SetErrors(errors);
  Press(Qt::Key_Home);
  Run("EditMovePoint1");
  Press(Qt::Key_Return);
  for (int i = 0; i < 30; ++i) Press(Qt::Key_Up);
  const QPointF origin(Graph().Axis(AxisId::X).Scale().Position(1),
                       Graph().Axis(AxisId::Y).Scale().Position(10));
  const PlotPoint target{Graph().Axis(AxisId::X).Scale().ValueAt(origin.x()),
                         Graph().Axis(AxisId::Y).Scale().ValueAt(origin.y() - 30)};
  Expect(MovePointQuestion(Graph(), Data(), 1, target), Answer::Yes);
  Press(Qt::Key_Return);
  EXPECT_NEAR(*GetY(Data(), 1), target.y, 1e-9);
  EXPECT_EQ(ActiveCanvas().Picked()->y_error, std::abs(*GetY(Data(), 1)) / 2) << "as it now is";
  Run("EditDelPoint1");
  Expect(DeletePointQuestion(Graph(), Data(), 1), Answer::Yes);
  Press(Qt::Key_Return);
  EXPECT_EQ(Data().PointCount(), 39);
}

}  // namespace
}  // namespace tarnwick
