// Long work on a thread of its own, with a progress window once it takes longer than half a second.
#pragma once

#include "desk/work/long_work.h"

class QWidget;

namespace tarnwick {

class ThreadedWork final : public LongWork {
 public:
  /// Half a second: shorter work is not worth a window.
  static constexpr int kPatienceMs = 500;

  explicit ThreadedWork(QWidget* parent) : parent_(parent) {}

 private:
  /// Windows go on painting; what the user types or clicks meanwhile waits, or goes to the progress window.
  void DoRun(const WorkTitle& title, const std::function<void(Progress&)>& work) override;

  QWidget* parent_;
};

}  // namespace tarnwick
