// The data editor as a user has it: loaded from its library, worked through its controls.
#include <QAbstractScrollArea>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <cmath>
#include <set>

#include <gtest/gtest.h>

#include "data/points/point_columns.h"
#include "data/series/data_series_file.h"
#include "data/series/point_errors.h"
#include "desk/fields/field_widget.h"
#include "desk/widgets/text.h"
#include "desktop_fixture.h"
#include "editors/data/preview_table.h"
#include "support/project_paths.h"
#include "support/run_statements.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

class DataEditorTest : public DesktopTest {
 protected:
  ProgramPaths Paths() override {
    ProgramPaths paths = DesktopTest::Paths();
    paths.libraries = {testing::ProgramFolder()};
    return paths;
  }

  void Open(const std::string& text) {
    Start({folder_.Write("run.csv", text)});
    Run("EditData1");
    QCoreApplication::processEvents();
    editor_ = form_->findChild<QWidget*>("DataEditorPages");
    ASSERT_TRUE(editor_ && editor_->isVisible());
  }
  void OpenExample(const char* name) {
    // Beside which the programs lie that read it.
    QCoreApplication::addLibraryPath(ToQt(testing::ProgramFolder().string()));
    Start({folder_.Write(name, testing::ReadFile(testing::ExamplesFolder() / name))});
    Run("EditData1");
    editor_ = form_->findChild<QWidget*>("DataEditorPages");
  }
  void ShowPage(int page) {
    editor_->findChild<QTabWidget*>("DataPages")->setCurrentIndex(page);
    QCoreApplication::processEvents();
  }
  void Press(const char* button) {
    editor_->findChild<QPushButton*>(button)->click();
    QCoreApplication::processEvents();
  }
  QLineEdit* Line(const char* name) { return editor_->findChild<QLineEdit*>(name); }
  static void Type(QLineEdit* line, const QString& text) {
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
  }
  void TypeField(const QString& name, const QString& text) {
    auto* field = editor_->findChild<FieldWidget*>(name);
    ASSERT_NE(field, nullptr) << name.toStdString();
    if (auto* edit = qobject_cast<QPlainTextEdit*>(field->Control()))
      return edit->setPlainText(text);
    auto* line = qobject_cast<QLineEdit*>(field->Control());
    Type(line ? line : field->Control()->findChild<QLineEdit*>(), text);
  }
  /// The texts of a row of the preview.
  QString PreviewRow(int row) {
    const auto* table = editor_->findChild<QTableWidget*>("Preview");
    QStringList texts;
    for (int column = 0; column < table->columnCount(); ++column) {
      if (const auto* item = table->item(row, column)) texts << item->text();
    }
    return texts.join('|');
  }
  QString Told() { return editor_->findChild<QLabel*>("SourceTold")->text(); }
  /// Asked before points are edited that were read.
  std::string QuestionOfSource() {
    return "The points of u come from " + folder_.File("run.csv").string() +
           ". Reading them again undoes what is edited here.\n\nMake them points of their own, "
           "without a source?";
  }
  const TSeries& Series(std::size_t i) { return ActiveDocument().Graph().Series(i); }
  std::vector<double> Ys(std::size_t i) { return YValues(Series(i).Points()); }

  QWidget* editor_ = nullptr;
};

TEST_F(DataEditorTest, PointsTypedIntoAnEmptyGraphMakeADataSet) {
  Start({});
  Run("FileNew1");
  Run("EditData1");
  QCoreApplication::processEvents();
  editor_ = form_->findChild<QWidget*>("DataEditorPages");
  EXPECT_EQ(editor_->findChild<QLabel*>("PointsTold")->text(),
            "The graph has no DataSet. X and Y typed here make one.");
  for (const auto& [x, y] : {std::pair("1", "2"), {"3", "4"}}) {
    Line("NewX")->setFocus();
    QTest::keyClicks(Line("NewX"), x);
    Type(Line("NewY"), y);
    QTest::keyClick(Line("NewY"), Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(Line("NewX")->selectedText(), x) << "the next one is typed over it";
  }
  ASSERT_EQ(ActiveDocument().Graph().SeriesCount(), 1U);
  EXPECT_EQ(Series(0).SeriesName(), "DataSet 1");
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 4}));
  EXPECT_FALSE(editor_->findChild<QLabel*>("PointsTold")->isVisible());
  EXPECT_TRUE(editor_->findChild<QTabWidget*>("DataPages")->isTabEnabled(0));
  Run("EditUndo1");
  Run("EditUndo1");
  EXPECT_EQ(ActiveDocument().Graph().SeriesCount(), 0U);
}

TEST_F(DataEditorTest, EverySettingOfASourceHasAControl) {
  Open("t,u\n1,2\n3,4\n");
  const std::set<std::string_view> groups{"Text", "Columns", "Rows"};
  for (const FieldRow& row : RowsOf<TDataSeries>(DataSeriesFields())) {
    if (!groups.contains(row.look.group) || row.look.control.kind == ControlKind::Hidden) continue;
    const QString name =
        QString::fromStdString(std::string(row.look.group) + "/" + std::string(row.look.caption));
    EXPECT_NE(editor_->findChild<FieldWidget*>(name), nullptr) << name.toStdString();
  }
}

TEST_F(DataEditorTest, MarksAreDraggedToWhereColumnsBegin) {
  Open("t u\n1 10\n2 20\n3 35\n");
  Press("CutByPlace");
  auto& cuts = *editor_->findChild<QAbstractScrollArea*>("Cuts");
  ASSERT_TRUE(cuts.isVisible());
  const int cell = cuts.fontMetrics().horizontalAdvance('0');
  const auto place = [&](int character, int y = 9) { return QPoint(6 + cell * character, y); };
  const auto mouse = [&](QEvent::Type type, QPoint at) {
    QMouseEvent event(type, at, cuts.viewport()->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(cuts.viewport(), &event);
  };
  const auto drag = [&](int from, int to, int y = 9) {
    mouse(QEvent::MouseButtonPress, place(from));
    mouse(QEvent::MouseMove, place(to, y));
    mouse(QEvent::MouseButtonRelease, place(to, y));
  };
  EXPECT_EQ(PreviewRow(1), "1|10") << "begins with the gaps";
  drag(3, 3);
  EXPECT_EQ(PreviewRow(1), "1|1|0") << "a click adds";
  drag(3, 9, -100);
  EXPECT_EQ(PreviewRow(1), "1|10") << "out of the lines";
  drag(1, 3);
  EXPECT_EQ(PreviewRow(1), "1 1|0");
  drag(3, -2);
  EXPECT_EQ(PreviewRow(1), "1|10") << "no further than behind the mark before";
  mouse(QEvent::MouseButtonDblClick, place(1));
  EXPECT_EQ(PreviewRow(1), "1 10");
  Press("CutByPlace");
  EXPECT_FALSE(cuts.isVisible());
  EXPECT_EQ(PreviewRow(1), "1|10");
}

TEST_F(DataEditorTest, TheBarOfWhatWasGuessedLeadsThere) {
  Start({folder_.Write("gap.csv", "t,u\n1,10\n2,\n3,30\n4,40\n")});
  for (const int page_before : {0, 1}) {
    if (auto* pages = form_->findChild<QTabWidget*>("DataPages"))
      pages->setCurrentIndex(page_before);
    form_->findChild<QPushButton*>("WhatWasGuessed")->click();
    QCoreApplication::processEvents();
    const auto* pages = form_->findChild<QTabWidget*>("DataPages");
    ASSERT_TRUE(pages && pages->isVisible());
    EXPECT_TRUE(pages->currentWidget()->findChild<QWidget*>("Preview"));
  }
}

TEST_F(DataEditorTest, ADataBaseIsOpenedByItsPlaceAndReadFromAnotherTable) {
  const std::string file = folder_.File("runs.db").string();
  testing::RunStatements(
      file, {"CREATE TABLE first (t REAL, u REAL)", "INSERT INTO first VALUES (1, 2), (2, 5)",
             "CREATE TABLE second (t REAL, u REAL)", "INSERT INTO second VALUES (1, 7), (2, 8)"});
  Start({});
  // The first is refused, and the dialog comes again: whenever that is, no other window is typed into.
  QStringList troubles;
  QTimer typist;
  typist.callOnTimeout([&] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || dialog->objectName() != "OpenSource") return;
    if (troubles.size() == 2) return dialog->reject();
    troubles << dialog->findChild<QLabel*>("SourceTrouble")->text();
    Type(dialog->findChild<QLineEdit*>("DatabaseAddress"), "sqlite:" + ToQt(file));
    Type(dialog->findChild<QLineEdit*>("DatabaseTable"), troubles.size() == 1 ? "third" : "first");
    QTest::keyClick(dialog, Qt::Key_Return);
  });
  typist.start(10);
  Run("FileOpenSource1");
  typist.stop();
  ASSERT_EQ(troubles.size(), 2);
  EXPECT_TRUE(troubles.back().contains("third")) << troubles.back().toStdString();
  ASSERT_EQ(form_->GraphWindows().size(), 1U);
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 5}));

  Run("EditData1");
  editor_ = form_->findChild<QWidget*>("DataEditorPages");
  ASSERT_TRUE(QTest::qWaitFor([&] { return PreviewRow(1) == "2|5"; }));
  EXPECT_TRUE(editor_->findChild<FieldWidget*>("Text/Separators")->isHidden());
  Type(Line("DatabaseTable"), "third");
  ASSERT_TRUE(QTest::qWaitFor([&] { return Told().contains("third"); }));
  EXPECT_EQ(editor_->findChild<QLabel*>("SourceCount")->text(), "") << "said once";
  Type(Line("DatabaseTable"), "second");
  ASSERT_TRUE(QTest::qWaitFor([&] { return PreviewRow(1) == "2|8"; }));
  Press("ApplySource");
  EXPECT_EQ(Ys(0), (std::vector<double>{7, 8}));
  Run("EditUndo1");
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 5}));
}

TEST_F(DataEditorTest, AnotherSheetIsReadByItsName) {
  OpenExample("furnace.xlsx");
  auto* const sheet = editor_->findChild<QComboBox*>("WorkbookSheet");
  ASSERT_TRUE(QTest::qWaitFor([&] { return PreviewRow(3) == "|°C|A"; })) << "units, by column";
  EXPECT_EQ(PreviewRow(2), "Time  Temperature  Current") << "a header, as one text";
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(sheet->currentText(), "Heating");
  EXPECT_EQ(editor_->findChild<FieldWidget*>("Text/Separators")->isHidden(), false);
  ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->count() == 3; }));
  EXPECT_EQ(sheet->currentText(), "Heating") << "the names are no choice";
  sheet->setCurrentText("Power");
  Type(Line("WorkbookRange"), "A1:B4");
  ASSERT_TRUE(QTest::qWaitFor([&] { return PreviewRow(0) == "Minute|Power [%]"; }));
  Press("GuessSource");
  Press("ApplySource");
  EXPECT_EQ(Ys(0), (std::vector<double>{100, 90, 80})) << "the columns of the other sheet";
  EXPECT_EQ(Series(1).Source().TablePart, "Heating") << "the other DataSet stays";
  EXPECT_EQ(editor_->findChild<QLabel*>("SourceTold")->text(),
            "Only this DataSet was read anew: \"" + ToQt(Series(1).SeriesName()) +
                "\" is still of \"Heating\".");
  Run("EditUndo1");
  EXPECT_EQ(Ys(0).size(), 239U);
}

TEST_F(DataEditorTest, OtherArraysAreTickedInTheList) {
  OpenExample("buoy.nc");
  auto* const list = editor_->findChild<QTreeWidget*>("ArrayList");
  ASSERT_NE(list, nullptr);
  ASSERT_TRUE(QTest::qWaitFor([&] { return list->topLevelItemCount() == 4; }));
  list->findItems("wave_height", Qt::MatchExactly).front()->setCheckState(0, Qt::Checked);
  EXPECT_EQ(Line("ArrayPaths")->text(), "wave_height");
  ASSERT_TRUE(QTest::qWaitFor([&] { return PreviewRow(0).startsWith("2023-06-01|0.61"); }));
  Press("GuessSource");
  Press("ApplySource");
  EXPECT_FLOAT_EQ(static_cast<float>(Ys(0).front()), 0.61F);
  EXPECT_EQ(Series(0).Source().TablePart, "wave_height");
}

TEST_F(DataEditorTest, ReadsByOtherSettingsAsOneStepAndCutsAllDataSetsOfTheFileAlike) {
  Open("t;u;v\nremark\n1;2;30\n2;5;60\n3;8;90\n");
  ASSERT_EQ(ActiveDocument().Graph().SeriesCount(), 2U);
  const std::vector<double> before = Ys(0);
  EXPECT_EQ(PreviewRow(2), "1|2|30");
  EXPECT_FALSE(editor_->findChild<QPushButton*>("ApplySource")->isEnabled());
  TypeField("Columns/Y", "v");
  TypeField("Columns/Y is computed from", "Y / 10");
  TypeField("Text/Header lines", "3");
  Press("ApplySource");
  EXPECT_EQ(Ys(0), (std::vector<double>{6, 9}));
  EXPECT_EQ(Ys(1), (std::vector<double>{60, 90})) << "cut alike, its own column";
  EXPECT_EQ(Series(0).SeriesName(), "v");
  EXPECT_EQ(Told(), "The text is cut alike for all 2 DataSets of the file.");
  Run("EditUndo1");
  EXPECT_EQ(Ys(0), before);
  EXPECT_EQ(Series(1).PointCount(), 3);

  // What cannot be read changes nothing, and can be taken back: a source that vanishes under the page, too.
  const std::string text = testing::ReadFile(folder_.File("run.csv"));
  std::filesystem::remove(folder_.File("run.csv"));
  TypeField("Columns/Y", "v");
  Press("ApplySource");
  Press("GuessSource");
  const std::string missing =
      "Cannot read the file: " + folder_.File("run.csv").string() + ", No such file or directory";
  EXPECT_EQ(TakeTold(), (std::vector<std::string>{missing, missing}));
  EXPECT_EQ(Ys(0), before);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
  testing::WriteFile(folder_.File("run.csv"), text);
  TypeField("Columns/Y is computed from", "Y + nothing");
  Press("ApplySource");
  EXPECT_EQ(TakeTold(), (std::vector<std::string>{
                            "There is no column \"nothing\" (column expression \"Y + nothing\"; "
                            "names: x, y, t, u, v)"}));
  EXPECT_EQ(Ys(0), before);
  Press("RevertSource");
  EXPECT_FALSE(editor_->findChild<QPushButton*>("ApplySource")->isEnabled());
  TypeField("Text/Header lines", "0");
  Press("GuessSource");
  EXPECT_EQ(PreviewRow(2), "1|2|30");
}

TEST_F(DataEditorTest, CountsWhileOneTypesSaysWhereAnExpressionFailsAndDrawsFurtherColumns) {
  Open("t,u,v\n1,2,3\n2,5,6\n3,8,x\n");
  ActiveDocument().Edit("Delete", [](TxyGraph& graph) { graph.DeleteSeries(1); });
  QCoreApplication::processEvents();
  auto* expression = editor_->findChild<FieldWidget*>("Columns/Y is computed from");
  const auto remark = [&] { return expression->findChild<QLabel*>("Remark"); };
  TypeField("Columns/Y is computed from", "Y * w");
  ASSERT_TRUE(QTest::qWaitFor([&] { return remark() && remark()->isVisible(); }));
  QTest::keyClick(expression->Control(), Qt::Key_Escape);
  ASSERT_EQ(form_->GraphWindows().size(), 1U) << "Esc closes the graph elsewhere only";
  EXPECT_EQ(remark()->text(), "There is no column \"w\": x, y, t, u, v.");
  TypeField("Columns/Y is computed from", "Y * t");
  TypeField("Columns/Y", "v");
  const auto* count = editor_->findChild<QLabel*>("SourceCount");
  ASSERT_TRUE(QTest::qWaitFor([&] { return count->text().startsWith("2 points"); }));
  EXPECT_EQ(count->text(), "2 points will be read. 1 rows are skipped.");
  EXPECT_FALSE(remark()->isVisible());
  const auto draw_as_well = [&](const char* column) {
    QMetaObject::invokeMethod(editor_->findChild<QTableWidget*>("Preview"), "columnChosen",
                              Q_ARG(QString, column),
                              Q_ARG(tarnwick::ColumnUse, ColumnUse::AnotherY));
  };
  for (const char* column : {"u", "t", "t"}) draw_as_well(column);  // the second t takes it back
  Press("ApplySource");
  ASSERT_EQ(ActiveDocument().Graph().SeriesCount(), 2U);
  EXPECT_EQ(Ys(0), (std::vector<double>{3, 12}));
  EXPECT_EQ(Ys(1), (std::vector<double>{2, 5, 8}));
  EXPECT_EQ(Series(1).SeriesName(), "u");
  EXPECT_NE(Series(1).Style().line_color, Series(0).Style().line_color);
  Run("EditUndo1");
  EXPECT_EQ(ActiveDocument().Graph().SeriesCount(), 1U);
}

TEST_F(DataEditorTest, PointsAreFoundChangedAddedAndDeletedEachAsOneStep) {
  Open("t,u\n1,2\n2,5\n3,8\n4,7\n");
  ShowPage(1);
  auto* table = editor_->findChild<QTableView*>("Points");
  Type(Line("FindX"), "2.9");
  QTest::keyClick(Line("FindX"), Qt::Key_Return);
  ASSERT_EQ(table->currentIndex().row(), 2);
  // The row chosen is the point picked, and back.
  EXPECT_EQ(ActiveCanvas().Picked()->x, 3);
  ActiveCanvas().Pick(PickedPointAt(Series(0), 1));
  EXPECT_EQ(table->currentIndex().row(), 1);
  ActiveCanvas().Pick(PickedPointAt(Series(0), 2));
  // The first change of points that have a source asks what is to become of that.
  const std::string question = QuestionOfSource();
  Expect(question, Answer::Cancel);
  const QModelIndex y = table->model()->index(2, 2);
  EXPECT_FALSE(table->model()->setData(y, "9.5"));
  Expect(question, Answer::No);
  EXPECT_TRUE(table->model()->setData(y, "9.5"));
  EXPECT_FALSE(table->model()->setData(y, "nonsense"));
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 5, 9.5, 7}));
  Type(Line("NewX"), "2.5");
  Type(Line("NewY"), "x");
  Press("AddPoint");
  Type(Line("NewY"), "-1");
  Press("AddPoint");
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 5, -1, 9.5, 7}));
  EXPECT_EQ(editor_->findChild<QLabel*>("PointCount")->text(), "5 points");
  QTest::keyClick(table, Qt::Key_Down, Qt::ShiftModifier);
  Press("DeletePoints");
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 5, 7}));
  for (int i = 0; i < 3; ++i) Run("EditUndo1");
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 5, 8, 7}));
}

TEST_F(DataEditorTest, AMillionCellsArePastedAsOneStep) {
  Open("t,u\n1,10\n2,20\n");
  ShowPage(1);
  QString text;
  for (int row = 3; row < 500'003; ++row)
    text += QString::number(row) + '\t' + QString::number(2 * row) + '\n';
  QApplication::clipboard()->setText(text);
  Expect(QuestionOfSource(), Answer::No);
  Press("PastePoints");
  EXPECT_EQ(Series(0).PointCount(), 500'002);
  EXPECT_EQ(Ys(0).back(), 2 * 500'002.0);
  EditHistory& history = ActiveDocument().History();
  EXPECT_EQ(history.UndoName(), "Paste Points");
  history.Undo();
  EXPECT_EQ(Series(0).PointCount(), 2);
  EXPECT_FALSE(history.CanUndo());
}

TEST_F(DataEditorTest, APasteThatIsCancelledChangesNothing) {
  Open("t,u\n1,10\n2,20\n");
  ShowPage(1);
  QString text;
  for (std::int64_t row = 0; row < 2'000'000; ++row)
    text += QString::number(row * 7919 % 2'000'003) + "\t1\n";
  QApplication::clipboard()->setText(text);
  Expect(QuestionOfSource(), Answer::No);
  QTimer watch;
  bool cancelled = false;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    auto* window = form_->findChild<QProgressDialog*>();
    if (!window || !window->isVisible()) return;
    cancelled = true;
    window->findChild<QPushButton*>()->click();
    watch.stop();
  });
  watch.start(20);
  Press("PastePoints");
  EXPECT_TRUE(cancelled);
  EXPECT_EQ(Series(0).PointCount(), 2);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
}

TEST_F(DataEditorTest, ColumnsArePastedAndWhatWasReadIsListedAndPutBack) {
  Open("t,u\n1,2\n2,5\n3,8\n");
  ShowPage(1);
  auto* table = editor_->findChild<QTableView*>("Points");
  auto* changes = editor_->findChild<QTableWidget*>("Changes");
  const auto told = [&] { return editor_->findChild<QLabel*>("ChangesTold")->text(); };
  EXPECT_FALSE(changes->isVisible());
  const std::string question =
      "The points of u come from " + folder_.File("run.csv").string() +
      ". Reading them again undoes what is edited here.\n\nMake them points of their own, without "
      "a source?";
  struct Row {
    const char* text;
    std::vector<double> ys;
    const char* told;
  };
  const Row rows[] = {
      {"x\ty\n2.5\t-1\n1\t20\n", {20, 5, -1, 8}, "Since the points were read: 1 changed, 1 added."},
      {"7\n9\n11\n", {20, 5, 7, 9}, "Since the points were read: 2 changed, 1 added."},
      {"no numbers at all", {20, 5, 7, 9}, "Since the points were read: 2 changed, 1 added."}};
  Expect(question, Answer::Yes);  // asked once; what was read is known without the source, too
  for (const Row& row : rows) {
    QApplication::clipboard()->setText(row.text);
    if (std::string(row.text).starts_with("7")) {
      Type(Line("FindX"), "2.5");
      QTest::keyClick(Line("FindX"), Qt::Key_Return);
    }
    table->setFocus();
    QTest::keyClick(table, Qt::Key_V, Qt::ControlModifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(Ys(0), row.ys) << row.text;
    EXPECT_EQ(told(), row.told);
  }
  EXPECT_EQ(TakeTold().size(), 1U) << "what holds no numbers is told";
  ASSERT_EQ(changes->rowCount(), 3);
  EXPECT_EQ(changes->item(2, 2)->text() + " now " + changes->item(2, 3)->text(), "3; 8 now 3; 9");
  changes->selectRow(2);
  EXPECT_EQ(table->currentIndex().siblingAtColumn(2).data(), "9") << "shown in the table of points";
  Press("PutBack");
  EXPECT_EQ(Ys(0), (std::vector<double>{20, 5, 7, 8}));
  Press("PutAllBack");
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 5, 8}));
  EXPECT_FALSE(changes->isVisible());
  Run("EditUndo1");
  EXPECT_EQ(Ys(0), (std::vector<double>{20, 5, 7, 8}));
}

TEST_F(DataEditorTest, PointsArePastedWithTheirErrors) {
  Open("t,u\n1,2\n2,5\n");
  ShowPage(1);
  Expect("The points of u come from " + folder_.File("run.csv").string() +
             ". Reading them again undoes what is edited here.\n\nMake them points of their own, "
             "without a source?",
         Answer::Yes);
  QApplication::clipboard()->setText("t\tu\tu error\n2\t6\t0.5\n3\t8\t0.25\n");
  auto* table = editor_->findChild<QTableView*>("Points");
  table->setFocus();
  QTest::keyClick(table, Qt::Key_V, Qt::ControlModifier);
  QCoreApplication::processEvents();
  EXPECT_EQ(Ys(0), (std::vector<double>{2, 6, 8}));
  const auto error = [&](std::size_t i) { return YErrorAt(Series(0), Series(0).Points().At(i)); };
  EXPECT_TRUE(std::isnan(error(0)));
  EXPECT_EQ(error(1), 0.5);
  EXPECT_EQ(error(2), 0.25);
  Run("EditUndo1");
  EXPECT_FALSE(HasYErrors(Series(0).Errors()));
}

TEST_F(DataEditorTest, ComesBackInItsSizeAndOnItsPage) {
  Open("t,u\n1,2\n");
  form_->resize(1400, 800);
  auto* dock = form_->findChild<QDockWidget*>("DataEditor");
  form_->resizeDocks({dock}, {510}, Qt::Horizontal);
  QCoreApplication::processEvents();
  const int width = dock->width();
  ASSERT_GT(width, dock->sizeHint().width());
  ShowPage(1);
  dock->close();
  Run("EditData1");
  QCoreApplication::processEvents();
  EXPECT_EQ(dock->width(), width);
  form_.reset();
  SetUp();  // the next start of the program
  Open("t,u\n1,2\n");
  form_->resize(1400, 800);
  QCoreApplication::processEvents();
  EXPECT_EQ(editor_->findChild<QTabWidget*>("DataPages")->currentIndex(), 1);
}

TEST_F(DataEditorTest, FiguresAndHistogramFollowThePointsAndAreCopied) {
  Open("t,u\n1,0\n2,1\n3,2\n4,10\n");
  ShowPage(2);
  editor_->findChild<QSpinBox*>("HistogramBins")->setValue(2);
  Press("CopyStatistics");
  EXPECT_TRUE(QApplication::clipboard()->text().endsWith("Y from\tto\tcount\n0\t5\t3\n5\t10\t1\n"));
  editor_->findChild<QComboBox*>("HistogramOf")->setCurrentIndex(0);
  Press("CopyStatistics");
  EXPECT_TRUE(
      QApplication::clipboard()->text().endsWith("X from\tto\tcount\n1\t2.5\t2\n2.5\t4\t2\n"));
}

}  // namespace
}  // namespace tarnwick
