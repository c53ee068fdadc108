// Long work in a test: done at once, seen by nobody.
#pragma once

#include <functional>

#include "base/progress.h"
#include "desk/work/long_work.h"

namespace tarnwick::testing {

class ImmediateWork final : public LongWork {
 public:
  void DoRun(const WorkTitle&, const std::function<void(Progress&)>& work) override {
    NoProgress progress;
    work(progress);
  }
};

}  // namespace tarnwick::testing
