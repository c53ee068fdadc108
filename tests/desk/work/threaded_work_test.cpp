#include "desk/work/threaded_work.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "base/error.h"

namespace tarnwick {
namespace {

TEST(ThreadedWorkTest, LongWorkShowsItsProgressAndCanBeCancelled) {
  QTimer::singleShot(ThreadedWork::kPatienceMs + 200, [] {
    auto* window = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->labelText(), "Loading data\nrun.dat");
    EXPECT_LE(std::abs(2 * window->value() - window->maximum()), 4);
    window->findChild<QPushButton*>()->click();
  });
  bool cancelled = false;
  ThreadedWork(nullptr).Run({"Loading data"}, [&](Progress& progress) {
    progress.Begin("Loading", "run.dat", 4000);
    for (int i = 0; i < 1000 && !cancelled; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      cancelled = !progress.Advance(2000);
    }
  });
  EXPECT_TRUE(cancelled);
}

TEST(ThreadedWorkTest, WhatTheWorkThrowsArrives) {
  EXPECT_THROW(ThreadedWork(nullptr).Run(
                   {"Loading data"}, [](Progress&) { throw FileError("no", "a.dat", "line 1"); }),
               FileError);
}

}  // namespace
}  // namespace tarnwick
