// Which of the instruction sets that Highway compiles for this processor has: what the dispatch of its headers asks for. The
// same answers stand in Highway's shared library, which times the processor's clock for some milliseconds whenever a program
// that needs it starts; a batch program that starts a thousand times cannot wait for that.
#include <hwy/targets.h>

#include <atomic>
#include <cstdint>

namespace hwy {
namespace {

std::int64_t TargetsOfProcessor() {
  std::int64_t targets = HWY_BASELINE_TARGETS;
#if HWY_ARCH_X86
  __builtin_cpu_init();
  if (__builtin_cpu_supports("ssse3")) targets |= HWY_SSSE3;
  if (__builtin_cpu_supports("sse4.1") && __builtin_cpu_supports("sse4.2")) targets |= HWY_SSE4;
  const bool avx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
                    __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
  if (avx2) targets |= HWY_AVX2;
  const bool avx3 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
                    __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw") &&
                    __builtin_cpu_supports("avx512cd");
  if (avx2 && avx3) targets |= HWY_AVX3;
#endif
  return targets | HWY_STATIC_TARGET;
}

/// 0: those of the processor.
std::atomic<std::int64_t>& TargetsOfTest() {
  static std::atomic<std::int64_t> targets{0};
  return targets;
}

}  // namespace

std::int64_t SupportedTargets() {
  static const std::int64_t targets = TargetsOfProcessor();
  const std::int64_t of_test = TargetsOfTest().load();
  return of_test != 0 ? of_test : targets;
}

void SetSupportedTargetsForTest(std::int64_t targets) {
  TargetsOfTest().store(targets);
  GetChosenTarget().DeInit();  // the next call chooses anew
}

ChosenTarget& GetChosenTarget() {
  static ChosenTarget chosen;
  return chosen;
}

}  // namespace hwy
