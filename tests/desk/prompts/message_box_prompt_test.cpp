// The boxes that questions are asked in.
#include "desk/prompts/message_box_prompt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

namespace tarnwick {
namespace {

TEST(MessageBoxPrompt, EscGivesTheAnswerThatChangesLeast) {
  using enum Answer;
  const struct {
    std::vector<Answer> offered;
    Answer by_escape;
  } kRows[] = {{{Yes, No, All}, No},        {{Yes, All, No}, No}, {{Yes, YesToAll, No}, No},
               {{Yes, No, Cancel}, Cancel}, {{Yes, No}, No},      {{Ok}, Ok}};
  for (const auto& row : kRows) {
    QTimer::singleShot(0, [] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      QTest::keyClick(box, Qt::Key_Escape);
    });
    EXPECT_EQ(MessageBoxPrompt(nullptr).Ask({"Clear?", row.offered}), row.by_escape);
  }
}

}  // namespace
}  // namespace tarnwick
