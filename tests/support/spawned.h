// A program that a test starts beside itself. Knows the system alone.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tarnwick::testing {

/// Started by posix_spawn: where a child shares the memory until it is another program, as Qt's do, the thread sanitizer counts
/// the child's calls to the thread that started it, and misses that thread's locks from then on.
class Spawned {
 public:
  /// The program is looked for in PATH, runs in `folder`, and writes its output and errors behind what is in `log` there.
  /// Throws std::system_error when it cannot be started.
  Spawned(std::vector<std::string> words, const std::filesystem::path& folder,
          const std::string& log);
  /// Ends it by SIGTERM when nobody waited for its end.
  ~Spawned();
  Spawned(const Spawned&) = delete;
  Spawned& operator=(const Spawned&) = delete;

  void Signal(int number) const;
  bool HasEnded() const;
  /// Its exit status; -1 when a signal ended it.
  int Wait();

 private:
  pid_t id_ = 0;
};

}  // namespace tarnwick::testing
