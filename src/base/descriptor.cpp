#include "base/descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace tarnwick {

Descriptor::~Descriptor() {
  if (value_ >= 0) ::close(value_);
}

int WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

}  // namespace tarnwick
