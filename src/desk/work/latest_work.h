// One question at a time, answered on a thread of its own; only the newest answer counts. Knows nothing of what is asked.
#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "base/progress.h"
#include "desk/work/mailbox.h"

namespace tarnwick {

class SharedProgress;
class Worker;

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
  /// What is there before all is: handed over as an answer is, by the work while it runs.
  using Interim = std::function<void(Answer)>;
  /// The same for work that has something to show meanwhile.
  void BeginInParts(std::function<Answer(Progress&, const Interim&)> work);
  void GiveUp();
  bool IsRunning() const { return progress_ != nullptr; }

 private:
  enum class Reaches { Interim, End };

  const AbandonedWork abandoned_;
  std::shared_ptr<SharedProgress> progress_;  // of what is being done; null for nothing
  Mailbox answers_;
  std::unique_ptr<Worker> worker_;
};

}  // namespace tarnwick
