// The folder for sockets and locks that a desktop session gives its programs, made up for a test binary started outside
// one: Qt warns where there is none, and a warning fails the test. Knows the environment only.
#pragma once

#include "support/temporary_folder.h"

#include <cstdlib>
#include <optional>

namespace tarnwick::testing {

class RuntimeFolder {
 public:
  // Leaves a session's own folder alone. Programs that the tests start inherit the answer.
  RuntimeFolder() {
    if (std::getenv("XDG_RUNTIME_DIR") == nullptr) {
      setenv("XDG_RUNTIME_DIR", own_.emplace().Path().c_str(), 1);
    }
  }
  RuntimeFolder(const RuntimeFolder&) = delete;
  RuntimeFolder& operator=(const RuntimeFolder&) = delete;

 private:
  std::optional<TemporaryFolder> own_;
};

}  // namespace tarnwick::testing
