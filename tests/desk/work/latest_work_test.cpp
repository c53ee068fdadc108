#include "desk/work/latest_work.h"

#include <gtest/gtest.h>

#include <QTest>
#include <atomic>
#include <future>

namespace tarnwick {
namespace {

TEST(LatestWork, WhatIsAbandonedRunsOutAndAnswersNobody) {
  std::promise<void> begins, release;
  const auto ended = std::make_shared<std::atomic<bool>>(false);
  bool answered = false;
  {
    LatestWork work(nullptr, AbandonedWork::RunsOut);
    work.Begin([&, ended, may_end = release.get_future().share()](Progress&) -> LatestWork::Answer {
      begins.set_value();
      may_end.wait();
      *ended = true;
      return [&answered] { answered = true; };
    });
    begins.get_future().wait();
  }
  EXPECT_FALSE(*ended) << "nobody waited";
  release.set_value();
  EXPECT_TRUE(QTest::qWaitFor([&] { return ended->load(); }));
  QTest::qWait(20);
  EXPECT_FALSE(answered);
}

TEST(LatestWork, TheNewestAnswerCounts) {
  LatestWork work(nullptr);
  std::vector<int> answers;
  for (const int question : {1, 2, 3})
    work.Begin([&answers, question](Progress&) -> LatestWork::Answer {
      return [&answers, question] { answers.push_back(question); };
    });
  EXPECT_TRUE(QTest::qWaitFor([&] { return !work.IsRunning(); }));
  EXPECT_EQ(answers, std::vector<int>{3});
}

}  // namespace
}  // namespace tarnwick
