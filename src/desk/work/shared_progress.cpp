#include "desk/work/shared_progress.h"

namespace tarnwick {

void SharedProgress::Begin(std::string_view, std::string_view subject, std::int64_t total) {
  const std::lock_guard lock(mutex_);
  subject_ = subject;
  done_ = 0;
  total_ = total;
}

bool SharedProgress::Advance(std::int64_t done) {
  done_ = done;
  return !cancelled_;
}

SharedProgress::Reading SharedProgress::Read() const {
  const std::lock_guard lock(mutex_);
  return {subject_, done_, total_};
}

}  // namespace tarnwick
