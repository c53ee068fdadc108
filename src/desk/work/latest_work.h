// One question at a time, answered on a thread of its own; only the newest answer counts. Knows nothing of what is asked.
#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>
#include <memory>

#include "base/progress.h"

namespace tarnwick {

class SharedProgress;

/// What becomes of work that is being done when nobody is there to be answered any more.
enum class AbandonedWork {
  IsWaitedFor,
  RunsOut  ///< behind the program's back, until it ends at the latest; for what hears of its progress too seldom
};

class LatestWork final : public QObject {
 public:
  /// What is done with the answer, on the asker's thread.
  using Answer = std::function<void()>;

  explicit LatestWork(QObject* parent, AbandonedWork abandoned = AbandonedWork::IsWaitedFor);
  ~LatestWork() override;

  /// Begins `work`, which touches only what it holds by value and throws nothing. What was being done is given up: it is
  /// told so by its progress, and its answer is dropped.
  void Begin(std::function<Answer(Progress&)> work);
  void GiveUp();
  bool IsRunning() const { return progress_ != nullptr; }

 private:
  /// The way of an answer back, which may find nobody.
  struct Line;

  const AbandonedWork abandoned_;
  std::unique_ptr<QThreadPool> pool_;
  std::shared_ptr<Line> line_;
  std::shared_ptr<SharedProgress> progress_;  // of what is being done; null for nothing
};

}  // namespace tarnwick
