#include "readers/reader_main.h"

#include <sys/resource.h>
#include <unistd.h>

#include <exception>
#include <iostream>
#include <new>

#include "base/descriptor.h"
#include "base/error.h"

namespace tarnwick {
namespace {

[[maybe_unused]] constexpr rlim_t kMostMemory = rlim_t{6} << 30;
constexpr rlim_t kMostSeconds = 600;  // of computing

void Bound(int resource, rlim_t most) {
  rlimit limit{};
  if (getrlimit(resource, &limit) != 0) return;
  limit.rlim_cur = std::min(most, limit.rlim_max);
  setrlimit(resource, &limit);
}

}  // namespace

int RunReaderMain(int argc, char** argv,
                  const std::function<std::string(std::span<char* const>)>& answer) {
  Bound(RLIMIT_CORE, 0);
  Bound(RLIMIT_CPU, kMostSeconds);
#ifdef TARNWICK_BOUNDS_MEMORY
  Bound(RLIMIT_AS, kMostMemory);
#endif
  std::string trouble;
  try {
    const std::string text = answer(std::span(argv + 1, static_cast<std::size_t>(argc - 1)));
    return WriteAll(STDOUT_FILENO, text) == 0 ? 0 : 1;
  } catch (const std::bad_alloc&) {
    trouble = "It holds more than the memory that reading it may take";
  } catch (const Error& error) {
    trouble = error.what();
  }
  std::cerr << trouble << '\n';
  return 1;
}

}  // namespace tarnwick
