#include "desk/prompts/password_prompt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "desk/document/document.h"
#include "desk/prompts/message_box_prompt.h"
#include "document/immediate_work.h"
#include "sources/database/session_passwords.h"
#include "support/scripted_prompt.h"

namespace tarnwick {
namespace {

constexpr const char* kServer = "db.test";

/// Somebody who types the same password whenever one is asked for.
class Typist final : public Prompt, public PasswordPrompt {
 public:
  Answer Ask(const Question& question) override { return question.answers.back(); }
  void Tell(std::string_view) override {}
  std::optional<QString> AskPassword(const std::string& text) override {
    asked.push_back(text);
    return types;
  }

  std::optional<QString> types;
  std::vector<std::string> asked;
};

/// A server that only "right" opens.
ReadResult ReadLocked(const GraphState& into, Progress&) {
  if (PasswordFor(kServer) != "right") throw PasswordWanted("Refused", kServer, "odbc:db.test");
  TxyGraph graph;
  graph.SetState(into);
  graph.AddSeries(std::make_unique<TSeries>()).AddPoint(1, 2);
  return {graph.State()};
}

TEST(PasswordPrompts, ReadingAsksOnceAndGoesOnWithTheRightOne) {
  struct Row {
    const char* what;
    std::optional<QString> types;
    bool read;
  };
  const Row rows[] = {{"the right one", "right", true},
                      {"a wrong one", "wrong", false},
                      {"none", std::nullopt, false}};
  for (const Row& row : rows) {
    RememberPassword(kServer, {});
    Typist typist;
    typist.types = row.types;
    testing::ImmediateWork work;
    Document document("Graph_1", work, typist);
    bool read = false;
    for (int time = 0; time < 2; ++time) {
      try {
        read = document.Files().AddData("Read", &ReadLocked);
      } catch (const PasswordWanted&) {
        EXPECT_EQ(document.Graph().SeriesCount(), 0U) << row.what;
      }
      EXPECT_EQ(read, row.read) << row.what;
    }
    EXPECT_EQ(typist.asked.size(), row.read ? 1U : 2U) << row.what << ": once for each reading";
    EXPECT_NE(typist.asked.front().find("odbc:db.test"), std::string::npos);
  }
  RememberPassword(kServer, {});
  testing::ScriptedPrompt nobody;
  EXPECT_THROW(RunWithPasswords(nobody, [] { throw PasswordWanted("Refused", kServer, ""); }),
               PasswordWanted);
}

TEST(PasswordPrompts, TheWindowShowsNoLetterAndTakesAPlaceAsPlainText) {
  QTimer::singleShot(0, [] {
    QWidget* const dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    auto* const line = dialog->findChild<QLineEdit*>();
    EXPECT_EQ(line->echoMode(), QLineEdit::Password);
    EXPECT_EQ(dialog->findChild<QLabel*>()->textFormat(), Qt::PlainText);
    QTest::keyClicks(line, "secret");
    QTest::keyClick(line, Qt::Key_Return);
  });
  EXPECT_EQ(MessageBoxPrompt(nullptr).AskPassword("odbc:<b>x</b>"), QString("secret"));
}

}  // namespace
}  // namespace tarnwick
