// Looks at a progress, and at the clock, while another thread waits for a statement. Knows the connection; knows no rows.
#pragma once

#include <stop_token>
#include <string>
#include <thread>

#include "base/progress.h"

namespace tarnwick {

class DatabaseConnection;

class StatementWatch {
 public:
  /// Stops what the connection runs when `progress` is cancelled or StatementLimit() is passed, and begins the progress, under
  /// `subject`, when it takes long. All outlive the watch.
  StatementWatch(const DatabaseConnection& connection, const std::string& subject,
                 Progress& progress);

  /// True when the statement was stopped because it took too long. Ends the watch.
  bool TookTooLong();

 private:
  void Look(const DatabaseConnection& connection, const std::string& subject, Progress& progress,
            const std::stop_token& done);

  bool late_ = false;
  std::jthread thread_;
};

}  // namespace tarnwick
