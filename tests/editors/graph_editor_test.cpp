// The graph editor as a user has it: loaded from its library, worked through its controls.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <set>

#include <gtest/gtest.h>

#include "data/series/data_series_file.h"
#include "desk/editors/editor_library.h"
#include "desk/fields/field_widget.h"
#include "desk/widgets/text.h"
#include "desktop_fixture.h"
#include "graph/appearance_fields.h"
#include "graph/axes/axis_fields.h"
#include "graph/files/graph_file.h"
#include "support/project_paths.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;
using Names = std::multiset<std::string>;

class GraphEditorTest : public DesktopTest {
 protected:
  ProgramPaths Paths() override {
    ProgramPaths paths = DesktopTest::Paths();
    paths.libraries = {folder_.Path(), testing::ProgramFolder()};
    paths.own_template = folder_.File("own/default.ttp");
    return paths;
  }

  void Open(const char* example = "reactor_log.tsv") {
    Start({Example(example)});
    Run("EditGraph1");
    QCoreApplication::processEvents();
    editor_ = form_->findChild<QWidget*>("GraphEditorPages");
    ASSERT_TRUE(editor_ && editor_->isVisible());
  }

  QStringList PageNames() {
    QStringList names;
    for (QTreeWidgetItemIterator item(Tree()); *item; ++item) names << (*item)->text(0);
    return names;
  }
  void ShowPage(const QString& page) {
    Tree()->setCurrentItem(Tree()->findItems(page, Qt::MatchRecursive).front());
    QCoreApplication::processEvents();
  }
  QTreeWidget* Tree() { return editor_->findChild<QTreeWidget*>("Pages"); }
  QList<FieldWidget*> Fields() { return editor_->findChildren<FieldWidget*>(); }
  /// By "Group/Caption".
  FieldWidget* Field(const QString& name) {
    auto* field = editor_->findChild<FieldWidget*>(name);
    EXPECT_NE(field, nullptr) << name.toStdString();
    return field;
  }
  void Press(const char* button) { editor_->findChild<QPushButton*>(button)->click(); }
  QListWidget* Items() { return editor_->findChild<QListWidget*>("Items"); }
  void Choose(const std::vector<int>& rows) {
    Items()->clearSelection();
    for (const int row : rows) Items()->item(row)->setSelected(true);
  }

  static void Type(FieldWidget* field, const QString& text) {
    auto* line = qobject_cast<QLineEdit*>(field->Control());
    if (!line) line = field->Control()->findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
  }
  static QString RemarkOf(const FieldWidget* field) {
    const auto* remark = field->findChild<QLabel*>("Remark");
    return remark && !remark->isHidden() ? remark->text() : QString();
  }

  TxyGraph& Graph() { return ActiveDocument().Graph(); }
  std::string Bytes() { return EncodeGraph(Graph()); }
  const AxisState& X() { return Graph().Axis(AxisId::X).State(); }

  QWidget* editor_ = nullptr;
};

template <class Owner>
void AddNames(Names& names, FieldTable<Owner> table,
              const std::set<std::string_view>& without = {}) {
  for (const FieldRow& row : RowsOf<Owner>(table)) {
    if (row.look.control.kind == ControlKind::Hidden || without.contains(row.look.group)) continue;
    names.insert(std::string(row.look.group) + "/" + std::string(row.look.caption));
  }
}

TEST_F(GraphEditorTest, EveryFieldOfEverySectionHasAControl) {
  Open();
  Names axis, rest, found;
  AddNames(axis, AxisFields());
  AddNames(rest, AppearanceFields());
  AddNames(rest, DimensionsFields());
  AddNames(rest, LegendFields());
  AddNames(rest, SeriesFields());
  AddNames(rest, MarkFields());
  // How the points are read is the data editor's.
  AddNames(rest, DataSeriesFields(), {"Source", "Text", "Columns", "Rows"});
  for (const QString& page : PageNames()) {
    ShowPage(page);
    Names on_page;
    for (const FieldWidget* field : Fields()) on_page.insert(field->objectName().toStdString());
    if (page.endsWith(" Axis")) {
      EXPECT_EQ(on_page, axis) << page.toStdString();
    } else {
      found.merge(on_page);
    }
  }
  EXPECT_EQ(found, rest);
}

/// Gives a control another value than it shows, by mouse and keys.
void ChangeThroughControl(FieldWidget* field) {
  QWidget* control = field->Control();
  if (auto* box = qobject_cast<QCheckBox*>(control)) return box->click();
  if (auto* list = qobject_cast<QComboBox*>(control); list && !list->isEditable()) {
    return QTest::keyClick(list, list->currentIndex() > 0 ? Qt::Key_Up : Qt::Key_Down);
  }
  if (auto* box = qobject_cast<QSpinBox*>(control)) {
    return QTest::keyClick(box, box->value() < box->maximum() ? Qt::Key_Up : Qt::Key_Down);
  }
  if (auto* line = qobject_cast<QLineEdit*>(control)) {
    bool number = false;
    const double value = line->text().toDouble(&number);
    line->selectAll();
    const double other = value >= 0.5 ? value - 0.25 : value + 0.25;
    return QTest::keyClicks(line, number ? QString::number(other) : QString("other"));
  }
  auto* button = field->findChild<QToolButton*>();
  if (!button) return;
  emit button->menu()->aboutToShow();
  for (auto* swatch : button->menu()->findChildren<QToolButton*>()) {
    if (swatch->toolTip() != button->text()) return swatch->click();
  }
}

TEST_F(GraphEditorTest, EveryControlWritesAndCancelRestoresByteForByte) {
  Open();
  Mark mark;
  mark.type = MarkType::Line;
  mark.caption = "here";
  ActiveDocument().Edit("Mark", [&](TxyGraph& graph) { graph.Marks().AddMark(mark); });
  std::set<std::string> untouched;
  for (const QString& page : PageNames()) {
    ShowPage(page);
    for (qsizetype i = 0; i < Fields().size(); ++i) {
      FieldWidget* field = Fields()[i];
      const std::string name = field->objectName().toStdString();
      const std::string before = Bytes();
      const std::string undo = ActiveDocument().History().UndoName();
      if (!field->Control()->isEnabled()) {
        untouched.insert(name);
        continue;
      }
      ChangeThroughControl(field);
      if (Bytes() == before) untouched.insert(name);
      Press("TakeBack");
      EXPECT_TRUE(Bytes() == before) << page.toStdString() << ", " << name;
      EXPECT_EQ(ActiveDocument().History().UndoName(), undo) << name;
      EXPECT_FALSE(ActiveDocument().History().CanRedo()) << name;
      Run("EditGraph1");
    }
  }
  const std::set<std::string> without_effect_now = {
      "Cross at zero/Color",
      "Cross at zero/Length (0: across the plot)",
      "Errors/Error of X, or percent",
      "Errors/Error of Y, or percent",
      "Labels/Date format",
      "Position/Percentage or value",
      "Regression/Color of the line",
      "Regression/Smoothing factor, 1 / window, or slope at the ends",
      "Regression/Steps of the curve",
      "Regression/Style of the line",
      "Scale/Ticks in a decade",
      "Ticks/Calendar unit",
      "Window/Left edge, share of the width",
      "Window/Share of the height",
      "Window/Share of the width",
      "Window/Top edge, share of the height"};
  untouched.erase("Mark/ID");  // only shown
  EXPECT_EQ(untouched, without_effect_now);
}

TEST_F(GraphEditorTest, WhatIsDoneOnAPageIsOneStep) {
  Open();
  const std::string before = Bytes();
  ShowPage("X Axis");
  Type(Field("Range/Minimum"), "-50");
  EXPECT_EQ(X().Min, -50);
  EXPECT_FALSE(X().AutoSizing);
  EXPECT_FALSE(
      qobject_cast<QCheckBox*>(Field("Range/Range follows the data")->Control())->isChecked());
  Type(Field("Title/Title"), "Time");
  EXPECT_FALSE(X().EnableAutoTitle) << "it would be replaced at once";
  const std::string after = Bytes();
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Edit X Axis");
  ShowPage("Legend");
  Field("Legend/Show the legend")->Control()->setFocus();
  qobject_cast<QCheckBox*>(Field("Legend/Show the legend")->Control())->click();
  Press("Keep");
  EXPECT_FALSE(editor_->isVisible());
  Run("EditUndo1");
  EXPECT_TRUE(Bytes() == after) << "another page is another step";
  Run("EditUndo1");
  EXPECT_TRUE(Bytes() == before);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
}

TEST_F(GraphEditorTest, AStepOfAnotherKindInBetweenIsNotTakenBack) {
  Open();
  ShowPage("Title and Fonts");
  Type(Field("Title/Title"), "One");
  Run("GraphLegend1");
  Type(Field("Title/Title"), "Two");
  Press("TakeBack");
  EXPECT_EQ(Graph().GetAppearance().title_of_graph, "One");
  EXPECT_FALSE(Graph().GetLegend().visible);
}

TEST_F(GraphEditorTest, NonsenseIsRefusedWithItsReasonAndChangesNothing) {
  struct Row {
    const char* page;
    const char* field;
    const char* typed;
  };
  Open();
  for (const Row& row : std::initializer_list<Row>{
           {"X Axis", "Range/Minimum", "300"},
           {"X Axis", "Range/Maximum", "-21"},
           {"X Axis", "Range/Minimum", "nonsense"},
           {"X Axis", "Range/Minimum", "1e400"},
           {"X Axis", "Range/Minimum", "nan"},
           {"X Axis", "Range/Minimum", ""},
           {"X Axis", "Range/Shortest range", "-1"},
           {"X Axis", "Ticks/Step", "0"},
           {"X Axis", "Ticks/Step", "-5"},
           {"X Axis", "Ticks/Step", "0.001"},
           {"All Axes", "Axes/Fewest steps", "35"},
           {"All Axes", "Axes/Most steps", "9"},
           {"DataSets", "DataSet/Name", " "},
           {"DataSets", "DataSet/X distance within which points are one", "-1"}}) {
    SCOPED_TRACE(std::string(row.field) + " " + row.typed);
    ShowPage(row.page);
    const std::string before = Bytes();
    FieldWidget* field = Field(row.field);
    const auto* line = field->Control()->findChild<QLineEdit*>();
    Type(field, row.typed);
    EXPECT_TRUE(field->IsRefused());
    EXPECT_TRUE(Bytes() == before) << "nor does the beginning of what was typed";
    EXPECT_FALSE(RemarkOf(field).isEmpty());
    if (!line) line = qobject_cast<QLineEdit*>(field->Control());
    EXPECT_EQ(line->text().trimmed(), QString(row.typed).trimmed()) << "it stays to be mended";
    Press("TakeBack");
    EXPECT_TRUE(Bytes() == before);
    Run("EditGraph1");
  }
}

TEST_F(GraphEditorTest, ARefusedMinimumHoldsOnceTheMaximumLetsIt) {
  Open();
  ShowPage("X Axis");
  Type(Field("Range/Minimum"), "300");
  Type(Field("Range/Maximum"), "400");
  EXPECT_EQ(X().Min, 300);
  EXPECT_EQ(X().Max, 400);
  EXPECT_EQ(RemarkOf(Field("Range/Minimum")), "");
  QTest::keyClicks(Field("Range/Maximum")->Control(), "0x");
  EXPECT_EQ(X().Min, 300);
  EXPECT_EQ(X().Max, 400);
}

TEST_F(GraphEditorTest, SeveralDataSetsAreChangedAtOnceAndDoubleNamesTold) {
  Open();
  ShowPage("DataSets");
  Choose({0, 2});
  FieldWidget* name = Field("DataSet/Name");
  EXPECT_EQ(qobject_cast<QLineEdit*>(name->Control())->placeholderText(), "various");
  Type(Field("Line/Width"), "4");
  const auto width = [&](std::size_t i) { return Graph().Series(i).Style().line_width; };
  EXPECT_EQ(width(0), 4);
  EXPECT_EQ(width(1), 1);
  EXPECT_EQ(width(2), 4);
  Choose({1});
  Type(name, QString::fromStdString(Graph().Series(0).SeriesName()));
  EXPECT_EQ(Graph().Series(1).SeriesName(), Graph().Series(0).SeriesName());
  EXPECT_NE(RemarkOf(name), "");
  EXPECT_FALSE(name->IsRefused());
}

TEST_F(GraphEditorTest, DataSetsChangePlacesAndTheirLooksAreCopied) {
  Open();
  ShowPage("DataSets");
  Graph().SetCurrentSeriesIndex(2);
  const std::string last = Graph().Series(2).SeriesName();
  Choose({2});
  editor_->findChild<QToolButton*>("Up")->click();
  EXPECT_EQ(Graph().Series(1).SeriesName(), last);
  EXPECT_EQ(Graph().CurrentSeriesIndex(), 1);
  ASSERT_TRUE(Items()->item(1)->isSelected());
  Items()->model()->moveRow({}, 1, {}, 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(Graph().Series(0).SeriesName(), last);
  QMenu* menu = editor_->findChild<QToolButton*>("CopyLook")->menu();
  emit menu->aboutToShow();
  menu->actions()[0]->trigger();
  for (std::size_t i = 1; i < 3; ++i) {
    EXPECT_EQ(Graph().Series(i).Style().line_color, Graph().Series(0).Style().line_color);
    EXPECT_EQ(Graph().Series(i).Style().first_axis, i == 1) << "it keeps its axis";
  }
}

TEST_F(GraphEditorTest, ItFollowsWhatIsClicked) {
  Open();
  const PlotLayout& layout = ActiveCanvas().Layout();
  const auto page = [&] { return Tree()->currentItem()->text(0).toStdString(); };
  const auto click = [&](QPointF place) {
    QTest::mouseClick(&ActiveCanvas(), Qt::LeftButton, {}, place.toPoint());
    return page();
  };
  EXPECT_EQ(click(layout.Axis(AxisId::Y2).labels[3].center), "Y2 Axis");
  EXPECT_EQ(click(layout.title->center), "Title and Fonts");
  EXPECT_EQ(click(layout.legend->frame.center()), "Legend");
  const TSeries& series = Graph().Series(1);
  const PickedPoint point = PickedPointAt(series, 100);
  const QPointF on_curve(layout.Axis(AxisId::X).scale.Position(point.x),
                         layout.YScaleOf(series).Position(point.y));
  EXPECT_EQ(click(on_curve), "DataSets");
  EXPECT_TRUE(Items()->item(1)->isSelected());
  Press("Keep");
  QTest::mouseDClick(&ActiveCanvas(), Qt::LeftButton, {},
                     layout.Axis(AxisId::X).title->center.toPoint());
  QCoreApplication::processEvents();
  EXPECT_TRUE(editor_->isVisible());
  EXPECT_EQ(page(), "X Axis");
}

TEST_F(GraphEditorTest, ALookIsUsedForNewGraphs) {
  Open();
  ShowPage("Y Axis");
  qobject_cast<QCheckBox*>(Field("Scale/Logarithmic scale")->Control())->click();
  Press("UseForNewGraphs");
  EXPECT_EQ(TakeTold().size(), 1U);
  Run("FileNew1");
  EXPECT_TRUE(Graph().Axis(AxisId::Y).LogScale());
  EXPECT_EQ(Graph().SeriesCount(), 0U);
}

TEST_F(GraphEditorTest, EscInTheEditorClosesNoGraph) {
  Open();
  ShowPage("Title and Fonts");
  QWidget* line = Field("Title/Title")->Control();
  const std::string before = Bytes();
  Type(Field("Title/Title"), "Other");
  line->setFocus();
  QTest::keyClick(line, Qt::Key_Escape);
  ASSERT_EQ(form_->GraphWindows().size(), 1U);
  EXPECT_TRUE(Bytes() == before);
  EXPECT_FALSE(editor_->isVisible());
}

TEST_F(DesktopTest, AMissingEditorIsNamed) {
  Start({Example("decay.dat")});
  Expect("Required library '" + EditorLibraryFile("tgredt") +
             "' is missing. Try to re-install Tarnwick.",
         Answer::Ok);
  Run("EditGraph1");
}

TEST_F(GraphEditorTest, ADamagedLibraryIsNamed) {
  struct Row {
    const char* what;
    std::filesystem::path copied;
    std::string told;  // empty: nothing
  };
  const std::string name = "'" + EditorLibraryFile("tgredt") + "'";
  const std::string damaged = "Library " + name + " is damaged. Try to re-install Tarnwick.";
  const std::string file = EditorLibraryFile("tgredt");
  Start({Example("decay.dat")});
  for (const Row& row :
       {Row{"no library", {}, damaged},
        Row{"of another release", TARNWICK_OLD_EDITOR / std::filesystem::path(file), damaged},
        Row{"without an editor", testing::ProgramFolder() / EditorLibraryFile("probe"), ""}}) {
    SCOPED_TRACE(row.what);
    std::filesystem::remove(folder_.File(file));
    if (row.copied.empty()) {
      folder_.Write(file, "no library");
    } else {
      std::filesystem::copy_file(row.copied, folder_.File(file));
    }
    if (!row.told.empty()) Expect(row.told, Answer::Ok);
    Run("EditGraph1");
    EXPECT_EQ(form_->findChild<QWidget*>("GraphEditorPages"), nullptr);
  }
}

}  // namespace
}  // namespace tarnwick
