#include "desk/work/worker.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTest>
#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

#include "desk/work/mailbox.h"

namespace tarnwick {
namespace {

using Numbers = std::vector<int>;

TEST(WorkerTest, EndsWhenAllIsDoneInItsOrder) {
  Numbers done;
  {
    Worker worker;
    EXPECT_TRUE(worker.IsIdle());
    for (int i = 0; i < 100; ++i) worker.Do([&done, i] { done.push_back(i); });
  }
  ASSERT_EQ(done.size(), 100U);
  EXPECT_TRUE(std::ranges::is_sorted(done));
}

TEST(MailboxTest, CallsComeInTheirOrderAlsoToALoopWithinACall) {
  const Mailbox box;
  const MailAddress& here = box.Address();
  Numbers called;
  here.Post([&] {
    called.push_back(1);
    QEventLoop inner;
    here.Post([&] {
      called.push_back(3);
      inner.quit();
    });
    inner.exec();
    called.push_back(4);
  });
  here.Post([&] { called.push_back(2); });
  EXPECT_TRUE(called.empty()) << "the caller goes on first";
  QCoreApplication::processEvents();
  EXPECT_EQ(called, (Numbers{1, 2, 3, 4}));
}

TEST(MailboxTest, WhatIsLeftAtItsEndIsDroppedAndNobodyWaitsForIt) {
  auto box = std::make_unique<Mailbox>();
  bool called = false;
  std::jthread waiting([&called, here = box->Address()] {
    for (int i = 0; i < 2; ++i) here.PostAndWait([&called] { called = true; });
  });
  box.reset();
  waiting.join();
  QCoreApplication::processEvents();
  EXPECT_FALSE(called);
}

TEST(MailboxTest, WhoWaitsGoesOnWhenTheCallWasMade) {
  const Mailbox box;
  int made = 0;
  int seen = 0;
  bool ended = false;
  std::jthread waiting([&, here = box.Address()] {
    here.PostAndWait([&made] { made = 1; });
    seen = made;
    here.Post([&ended] { ended = true; });
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return ended; }));
  EXPECT_EQ(seen, 1);
}

TEST(MailboxTest, ACallMayEndTheMailbox) {
  auto box = std::make_unique<Mailbox>();
  const MailAddress here = box->Address();
  int called = 0;
  for (int i = 0; i < 2; ++i)
    here.Post([&] {
      ++called;
      box.reset();
    });
  QCoreApplication::processEvents();
  EXPECT_EQ(called, 1);
}

}  // namespace
}  // namespace tarnwick
