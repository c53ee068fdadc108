#include "app/marks/mark_editor.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "desktop_fixture.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

class MarkEditorTest : public DesktopTest {
 protected:
  void Open() {
    Start({Example("decay.dat")});
    editor_ = std::make_unique<TxyMark>(
        ActiveDocument(), -1, *prompt_, form_.get(),
        [](const Color&) { return std::optional(Color::FromRgb(1, 2, 3)); });
    editor_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(editor_.get()));
  }
  void TearDown() override {
    editor_.reset();
    DesktopTest::TearDown();
  }
  template <class Widget>
  Widget& Find(const char* name) {
    return *editor_->findChild<Widget*>(name);
  }
  void Press(const QString& text) {
    for (auto* button : editor_->findChildren<QPushButton*>()) {
      if (button->text() == text) button->click();
    }
  }
  void Type(const char* field, const char* text) {
    auto& edit = Find<QLineEdit>(field);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClicks(&edit, text);
  }
  QStringList Lines() {
    QStringList lines;
    auto& list = Find<QListWidget>("ListBox2");
    for (int row = 0; row < list.count(); ++row) lines += list.item(row)->text();
    return lines;
  }
  const Mark& MarkOf(std::int32_t id) { return *ActiveDocument().Graph().Marks().FindMark(id); }

  std::unique_ptr<TxyMark> editor_;
};

TEST_F(MarkEditorTest, ATypeShowsTheNumbersItUses) {
  Open();
  Press("New");
  const QStringList labels[] = {{"Vert Line X = "},
                                {"Hor Line Y = "},
                                {"Point X = ", "Point Y = ", "Point Width"},
                                {"Origin X = ", "Origin Y = ", "End X = ", "End Y = "}};
  auto& type = Find<QComboBox>("cbx_MarkType");
  for (const int index : {3, 2, 1, 0}) {
    QTest::keyClick(&type, Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(&type, Qt::Key_Down);
    EXPECT_EQ(static_cast<int>(MarkOf(1).type), index);
    QStringList shown;
    for (const auto* label : editor_->findChildren<QLabel*>()) {
      const bool position = label->buddy() && label->buddy()->isVisible() &&
                            label->buddy()->parentWidget()->inherits("QGroupBox");
      if (position) shown += label->text();
    }
    EXPECT_EQ(shown, labels[index]);
  }
}

TEST_F(MarkEditorTest, NumbersAreTakenAsTypedAndWhatIsNoneIsLeftOut) {
  struct Row {
    const char* typed;
    double stored;
    bool wrong;
  };
  const Row rows[] = {
      {"", 7, false},      {".", 7, false},  {".5", 0.5, false}, {"2,5", 2.5, false},
      {"1e3", 1e3, false}, {"abc", 7, true}, {"-", 7, true},     {"-3", -3, false},
      {"NaN", 7, true},    {"0x1", 0, true},
  };
  Open();
  Press("New");
  for (const Row& row : rows) {
    SCOPED_TRACE(row.typed);
    Type("e_MarkX1", "7");
    Type("e_MarkX1", row.typed);
    EXPECT_EQ(MarkOf(1).x1, row.stored);
    EXPECT_EQ(Find<QLabel>("Refused").text().contains("is not a number"), row.wrong);
  }
}

TEST_F(MarkEditorTest, WhatIsTypedInOneFieldIsOneStep) {
  Open();
  Press("New");
  Type("e_MarkCaption", "peak");
  EXPECT_EQ(Lines(), QStringList{"1: peak"});
  auto& status = Find<QComboBox>("cbx_MarkStatus");
  status.setFocus();
  QTest::keyClick(&status, Qt::Key_End);
  Find<QPushButton>("ChooseMarkColor").click();
  EXPECT_EQ(MarkOf(1).color, Color::FromRgb(1, 2, 3));
  EXPECT_EQ(MarkOf(1).status, MarkStatus::NotDrawn);
  Find<QAbstractButton>("cbx_ShowMarks").click();
  EXPECT_FALSE(ActiveDocument().Graph().GetAppearance().marks_are_shown);
  Type("e_MarkX1", "12");
  Press("O&K");
  EXPECT_EQ(editor_->result(), QDialog::Accepted);
  EXPECT_EQ(editor_->EditedMark()->x1, 12);
  EXPECT_TRUE(ActiveDocument().History().Changed());
  std::vector<std::string> steps;
  for (; ActiveDocument().History().CanUndo(); ActiveDocument().History().Undo()) {
    steps.emplace_back(ActiveDocument().History().UndoName());
  }
  EXPECT_EQ(steps, (std::vector<std::string>{"Edit Mark", "Hide Marks", "Edit Mark", "Edit Mark",
                                             "Edit Mark", "New Mark"}));
}

TEST_F(MarkEditorTest, MarksAreAddedDeletedAndCleared) {
  Open();
  for (int i = 0; i < 3; ++i) Press("New");
  auto& list = Find<QListWidget>("ListBox2");
  list.setCurrentRow(1);
  Press("Delete");
  EXPECT_EQ(Lines(), (QStringList{"1: 1", "3: 3"}));
  EXPECT_EQ(Find<QLineEdit>("e_MarkX1").text(), "");
  EXPECT_FALSE(editor_->EditedMark());
  Press("New");
  EXPECT_EQ(Lines(), (QStringList{"1: 1", "2: 2", "3: 3"}));
  EXPECT_EQ(editor_->EditedMark()->id, 2);
  Expect("Clear All Marks?", Answer::Yes);
  Press("C&lear All");
  EXPECT_TRUE(ActiveDocument().Graph().Marks().All().empty());
}

TEST_F(MarkEditorTest, CancelTakesEverythingBackAndClosingKeepsIt) {
  Start({Example("decay.dat")});
  for (const bool cancelled : {true, false}) {
    QTimer::singleShot(0, [cancelled] {
      QWidget* editor = QApplication::activeModalWidget();
      ASSERT_NE(editor, nullptr);
      for (auto* button : editor->findChildren<QPushButton*>()) {
        if (button->text() == "New") button->click();
      }
      for (auto* button : editor->findChildren<QPushButton*>()) {
        if (cancelled && button->text() == "Cancel") return button->click();
      }
      editor->close();
    });
    Run("MarkEdit1");
    EXPECT_EQ(ActiveDocument().Graph().Marks().All().empty(), cancelled);
    EXPECT_EQ(ActiveDocument().History().CanUndo(), !cancelled);
  }
}

TEST_F(MarkEditorTest, CommandsTellWhatIsMissingAndWorkOnTheCurrentMark) {
  Start({Example("decay.dat")});
  Run("MarkDelete1");
  Run("editXShift1");
  EXPECT_EQ(TakeTold(), (std::vector<std::string>{"No Mark Found!", "No Mark Selected!"}));
  TxyGraph& graph = ActiveDocument().Graph();
  for (const MarkType type : {MarkType::Horizontal, MarkType::Vertical}) {
    AddMark(graph, {.x1 = 100, .y1 = 5, .color = {}, .caption = {}, .type = type});
  }
  const double first = graph.CurrentSeries()->Points().At(0).x;
  Run("MarkBaseLine1");
  EXPECT_EQ(TakeTold(), std::vector<std::string>{"Mark must be Either Linier or Horizontal"});
  Run("editXShift1");
  EXPECT_EQ(graph.CurrentSeries()->Points().At(0).x, first - 100);
  Run("EditUndo1");
  QTimer::singleShot(0, [] {
    auto* editor = qobject_cast<TxyMark*>(QApplication::activeModalWidget());
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->EditedMark()->id, 2);
    editor->findChild<QListWidget*>("ListBox2")->setCurrentRow(0);
    editor->close();
  });
  Run("MarkEdit1");
  Run("MarkBaseLine1");
  EXPECT_EQ(graph.CurrentSeries()->ZeroValue(), 5);
  Run("MarkDelete1");
  EXPECT_EQ(graph.Marks().All().size(), 1u);
}

}  // namespace
}  // namespace tarnwick
