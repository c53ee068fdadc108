// Choices drawn by lot that are the same on every platform: distributions of the standard library are not.
#pragma once

#include <random>

namespace tarnwick::testing {

class Lot {
 public:
  explicit Lot(unsigned seed) : engine_(seed) {}
  int Of(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }
  bool OneIn(int count) { return Of(count) == 0; }
  double Part() { return Of(1001) / 1000.0; }

 private:
  std::mt19937 engine_;
};

}  // namespace tarnwick::testing
