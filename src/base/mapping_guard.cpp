#include "base/mapping_guard.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <mutex>

namespace tarnwick {
namespace {

struct GuardedRange {
  std::atomic<bool> taken;
  std::atomic<std::uintptr_t> begin, end;  // empty while it is being filled in
  std::atomic<bool> cut_short;
};

/// A signal has no object to be handed: what it looks at is the program's, and lock-free.
std::array<GuardedRange, 256> guarded_ranges;
static_assert(std::atomic<std::uintptr_t>::is_always_lock_free &&
              std::atomic<bool>::is_always_lock_free);

/// Puts zeros where the file has ended. Any other error of the bus ends the program as without us.
void AnswerBusError(int signal, siginfo_t* info, void*) {
  const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
  for (GuardedRange& range : guarded_ranges) {
    const std::uintptr_t end = range.end;
    if (address < range.begin || address >= end) continue;
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const std::uintptr_t from = address / page * page;
    void* const zeros = ::mmap(reinterpret_cast<void*>(from), end - from, PROT_READ,
                               MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
    if (zeros == MAP_FAILED) break;
    range.cut_short = true;
    return;
  }
  ::signal(signal, SIG_DFL);  // the access happens again, and ends the program
}

void ListenOnce() {
  static std::once_flag listening;
  std::call_once(listening, [] {
    struct sigaction action {};
    action.sa_sigaction = AnswerBusError;
    action.sa_flags = SA_SIGINFO;
    ::sigaction(SIGBUS, &action, nullptr);
  });
}

}  // namespace

MappingGuard::MappingGuard(const char* mapping, std::size_t size) : place_(0) {
  ListenOnce();
  while (place_ < guarded_ranges.size() && guarded_ranges[place_].taken.exchange(true)) ++place_;
  if (place_ == guarded_ranges.size()) return;
  GuardedRange& range = guarded_ranges[place_];
  range.cut_short = false;
  range.begin = reinterpret_cast<std::uintptr_t>(mapping);
  range.end = reinterpret_cast<std::uintptr_t>(mapping) + size;
}

MappingGuard::~MappingGuard() {
  if (place_ == guarded_ranges.size()) return;
  guarded_ranges[place_].end = 0;
  guarded_ranges[place_].taken = false;
}

bool MappingGuard::WasCutShort() const {
  return place_ < guarded_ranges.size() && guarded_ranges[place_].cut_short;
}

}  // namespace tarnwick
