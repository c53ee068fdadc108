#include "desk/work/worker.h"

#include <system_error>
#include <utility>

namespace tarnwick {

void Worker::Do(Job job) {
  if (!thread_.joinable()) {
    try {
      thread_ = std::jthread([this](const std::stop_token& ending) { Work(ending); });
    } catch (const std::system_error&) {
      return job();
    }
  }
  {
    const std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(job));
  }
  came_.notify_one();
}

bool Worker::IsIdle() const {
  const std::lock_guard lock(mutex_);
  return jobs_.empty();
}

void Worker::Work(const std::stop_token& ending) {
  std::unique_lock lock(mutex_);
  // When it is to end, jobs that wait are done all the same.
  while (came_.wait(lock, ending, [this] { return !jobs_.empty(); })) {
    Job job = std::move(jobs_.front());
    lock.unlock();
    job();
    job = {};
    lock.lock();
    jobs_.pop_front();
  }
}

}  // namespace tarnwick
