// The part all test mains share: run everything, and take a run that ran nothing for a failure.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>

namespace tarnwick::testing {

// The process' exit status: 0 when at least one test ran and all passed. Listing the tests counts as a success.
[[nodiscard]] inline int RunTests() {
  const int status = RUN_ALL_TESTS();
  if (GTEST_FLAG_GET(list_tests)) {
    return status;
  }
  if (::testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
    std::fputs("No test ran.\n", stderr);
    return 1;
  }
  return status;
}

}  // namespace tarnwick::testing
