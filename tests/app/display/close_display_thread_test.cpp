#include "app/display/close_display_thread.h"

#include <atomic>
#include <chrono>

#include <gtest/gtest.h>

#include "base/undefined.h"

namespace tarnwick {
namespace {

TEST(CloseDisplayThread, ShowsTheLastValuesAtMostTenTimesASecond) {
  using namespace std::chrono_literals;
  std::atomic<int> shown = 0;
  std::atomic<int> last = 0;
  const auto begin = std::chrono::steady_clock::now();
  {
    TCloseDisplayThread thread([&](const std::vector<std::string>& texts, int version) {
      EXPECT_EQ(texts, (std::vector<std::string>{"2.000", "3"}));
      ++shown;
      last = version;
    });
    for (int version = 1; version <= 250; ++version) {
      thread.Put({{{2, 0.012}, {3, kUndefined}}, version});
      std::this_thread::sleep_for(1ms);
    }
    while (last != 250 && std::chrono::steady_clock::now() - begin < 10s)
      std::this_thread::sleep_for(1ms);
  }
  const auto time = std::chrono::steady_clock::now() - begin;
  EXPECT_EQ(last, 250);
  EXPECT_LE(shown, 2 + time / 100ms);
}

}  // namespace
}  // namespace tarnwick
