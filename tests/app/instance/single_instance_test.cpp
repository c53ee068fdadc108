#include "app/instance/single_instance.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDataStream>
#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <thread>

#include "app/instance/hand_over.h"
#include "desk/work/mailbox.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;
using Start = SingleInstance::Start;

class SingleInstanceTest : public ::testing::Test {
 protected:
  /// Another start, from a thread of its own: this one's event loop answers meanwhile.
  Start StartAnother(const Words& words, std::chrono::milliseconds patience = 5s) {
    Start start = Start::Blocked;
    bool done = false;
    const Mailbox ends;
    std::thread other([&] {
      SingleInstance second(names_);
      start = second.Begin(words, "token", patience);
      ends.Address().Post([&done] { done = true; });
    });
    EXPECT_TRUE(QTest::qWaitFor([&done] { return done; }, 20'000));
    other.join();
    return start;
  }

  testing::TemporaryFolder folder_;
  InstanceNames names_{QString::fromStdString(folder_.File("i.socket").string()),
                       QString::fromStdString(folder_.File("i.lock").string())};
};

TEST_F(SingleInstanceTest, ASecondStartHandsItsWordsOver) {
  const Words words = {"plain", "two words",           "quo\"te", "line\nbreak", "\xFF\xFE no text",
                       "-tile", std::string(3000, 'x')};
  std::vector<Words> taken;
  QByteArray token;
  {
    SingleInstance first(names_);
    ASSERT_EQ(first.Begin({}, {}, 0ms), Start::First);
    EXPECT_EQ(StartAnother(words, 50ms), Start::Blocked) << "it holds the lock and says nothing";
    first.Listen();
    QObject::connect(&first, &SingleInstance::wordsTaken,
                     [&](const Words& handed) { taken.push_back(handed); });
    QObject::connect(&first, &SingleInstance::activated,
                     [&](const QByteArray& given) { token = given; });
    EXPECT_EQ(StartAnother({}), Start::HandedOver);
    EXPECT_EQ(token, "token");
    EXPECT_EQ(StartAnother(words), Start::HandedOver);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !taken.empty(); }));
  }
  Words expected = words;
  expected.insert(expected.begin(), "-no ");
  EXPECT_EQ(taken, std::vector<Words>{expected});
  SingleInstance next(names_);
  EXPECT_EQ(next.Begin({}, {}, 0ms), Start::First) << "the first one has ended";
}

TEST_F(SingleInstanceTest, WaitsForOneThatIsStillBeginning) {
  SingleInstance first(names_);
  ASSERT_EQ(first.Begin({}, {}, 0ms), Start::First);
  QTimer::singleShot(300, &first, &SingleInstance::Listen);
  EXPECT_EQ(StartAnother({"a"}), Start::HandedOver);
}

TEST_F(SingleInstanceTest, WhatAKilledOneLeftStopsNobody) {
  if (const pid_t killed = fork(); killed == 0) {
    SingleInstance instance(names_);
    instance.Begin({}, {}, 0ms);
    instance.Listen();
    raise(SIGKILL);
  } else {
    ASSERT_EQ(waitpid(killed, nullptr, 0), killed);
  }
  ASSERT_TRUE(QFile::exists(names_.lock) && QFile::exists(names_.socket));
  SingleInstance first(names_);
  EXPECT_EQ(first.Begin({}, {}, 500ms), Start::First);
  first.Listen();
  EXPECT_EQ(StartAnother({}), Start::HandedOver);
}

TEST_F(SingleInstanceTest, BytesOfAnotherProgramDoNoHarm) {
  SingleInstance first(names_);
  ASSERT_EQ(first.Begin({}, {}, 0ms), Start::First);
  first.Listen();
  QSignalSpy words(&first, &SingleInstance::wordsTaken);
  QLocalSocket foreign;
  foreign.connectToServer(names_.socket);
  foreign.write("GET / HTTP/1.0\r\n\r\n");
  EXPECT_EQ(StartAnother({}), Start::HandedOver);
  EXPECT_TRUE(words.isEmpty());
}

TEST(HandOver, GivesWholePathsAndReadsAJoinedLineAlone) {
  testing::TemporaryFolder folder;
  const auto here = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  folder.Write("a.dat", "1 2\n");
  EXPECT_EQ(WordsToHandOver({"a.dat", "-a.dat", "none", "@clipboard"}),
            (Words{(std::filesystem::current_path() / "a.dat").string(), "-a.dat", "none",
                   "@clipboard"}));
  std::filesystem::current_path(here);

  QByteArray joined;
  QDataStream stream(&joined, QIODevice::WriteOnly);
  stream << QByteArray("-no \"a\"b c");
  EXPECT_EQ(DecodeWords(joined), (Words{"-no ", "a", "b c"}));
  EXPECT_EQ(DecodeWords("\x00\x00\x00\x09xy"), std::nullopt);
}

}  // namespace
}  // namespace tarnwick
