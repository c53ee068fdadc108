#include "sources/database/statement_watch.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "sources/database/database_connection.h"
#include "sources/database/statement_limit.h"

namespace tarnwick {
namespace {

constexpr auto kPatience = std::chrono::milliseconds(300);  // shorter waits show nothing
constexpr auto kBetweenLooks = std::chrono::milliseconds(20);

}  // namespace

StatementWatch::StatementWatch(const DatabaseConnection& connection, const std::string& subject,
                               Progress& progress)
    : thread_([this, &connection, &subject, &progress](const std::stop_token& done) {
        Look(connection, subject, progress, done);
      }) {}

bool StatementWatch::TookTooLong() {
  thread_.request_stop();
  if (thread_.joinable()) thread_.join();
  return late_;
}

void StatementWatch::Look(const DatabaseConnection& connection, const std::string& subject,
                          Progress& progress, const std::stop_token& done) {
  std::mutex mutex;
  std::condition_variable_any changed;
  const auto begun = std::chrono::steady_clock::now();
  const auto limit = StatementLimit();
  bool shown = false, stopped = false;
  while (!done.stop_requested()) {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, done, kBetweenLooks, [] { return false; });
    if (done.stop_requested()) return;
    const auto taken = std::chrono::steady_clock::now() - begun;
    if (!shown && taken > kPatience) {
      progress.Begin("Loading data", subject, 0);
      shown = true;
    }
    if (!stopped && (progress.Cancelled() || taken > limit)) {
      late_ = !progress.Cancelled();
      connection.Stop();
      stopped = true;
    }
  }
}

}  // namespace tarnwick
