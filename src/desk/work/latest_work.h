// One question at a time, answered on a thread of its own; only the newest answer counts. Knows nothing of what is asked.
#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>
#include <memory>

#include "base/progress.h"

namespace tarnwick {

class SharedProgress;

class LatestWork final : public QObject {
 public:
  /// What is done with the answer, on the asker's thread.
  using Answer = std::function<void()>;

  explicit LatestWork(QObject* parent);
  ~LatestWork() override;

  /// Begins `work`, which touches only what it holds by value and throws nothing. What was being done is given up: it is
  /// told so by its progress, and its answer is dropped.
  void Begin(std::function<Answer(Progress&)> work);
  void GiveUp();
  bool IsRunning() const { return progress_ != nullptr; }

 private:
  QThreadPool pool_;
  std::shared_ptr<SharedProgress> progress_;  // of what is being done; null for nothing
};

}  // namespace tarnwick
