// A thread that does one job after another. Knows nothing of the jobs; how they answer is theirs (mailbox.h).
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace tarnwick {

/// Used by one thread at a time.
class Worker {
 public:
  /// Throws nothing.
  using Job = std::function<void()>;

  Worker() = default;
  /// Waits until all jobs are done.
  ~Worker() = default;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  /// Has the job done after those before it. The first one makes the thread; where the system lets there be no more of them,
  /// the job is done here and now.
  void Do(Job job);
  /// Whether all jobs are done.
  bool IsIdle() const;

 private:
  void Work(const std::stop_token& ending);

  mutable std::mutex mutex_;  // guards the jobs
  std::condition_variable_any came_;
  std::deque<Job> jobs_;  // the first one is being done
  std::jthread thread_;   // last: it uses the others
};

}  // namespace tarnwick
