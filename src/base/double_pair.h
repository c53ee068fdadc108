// Two numbers in one register of the processor. Knows numbers only.
#pragma once

#include <cstring>

namespace tarnwick {

/// Compilers leave loops over minimum and maximum scalar for the sake of NaN; two values in one register say what is meant.
using DoublePair = double __attribute__((vector_size(16)));

/// The two values that stand there, however they are aligned.
inline DoublePair LoadPair(const double* values) {
  DoublePair pair;
  std::memcpy(&pair, values, sizeof(pair));
  return pair;
}

}  // namespace tarnwick
