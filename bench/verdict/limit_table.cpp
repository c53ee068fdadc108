#include "limit_table.h"

#include <iostream>

#include "base/split_mix.h"
#include "chance.h"
#include "fit/judge/fit_findings.h"
#include "scene.h"
#include "simulated_fit.h"

namespace tarnwick::bench {
namespace {

using enum Meaning;

constexpr int kPoints[] = {20, 40, 100, 300};
constexpr double kNoises[] = {0.01, 0.03, 0.1};
constexpr double kLastX = 10;

/// The last parameter is one of size, drawn in units of the points' distance.
const Family kFamilies[] = {
    {"growth", "a*(1-exp(-x/t))", {{"a", 2, 9, Height}, {"t", 0.001, 0.08, Size}}},
    {"step",
     "a+b/(1+exp(-(x-c)/w))",
     {{"a", 0, 2}, {"b", 1, 5, Height}, {"c", 3, 7, Place}, {"w", 0.001, 0.05, Size}}},
    {"arctan",
     "a*arctan((x-b)/w)+d",
     {{"a", 1, 4, Height}, {"b", 3, 7, Place}, {"d", 0, 1}, {"w", 0.0001, 0.002, Size}}},
    {"kink",
     "a+b*w*ln(1+exp((x-c)/w))",
     {{"a", 0, 2}, {"b", 1, 3, Height}, {"c", 3, 7, Place}, {"w", 0.001, 0.05, Size}}},
};

FitResult FitLimit(const Family& family, const Measurement& measurement) {
  Chance chance(measurement.seed);
  Scene scene;
  scene.parameters = DrawParameters(family, chance);
  for (int i = 0; i < measurement.points; ++i)
    scene.x.push_back(kLastX * i / (measurement.points - 1));
  scene.parameters.back() *= scene.x[1];
  scene.clean = scene.y = Curve(family, scene.parameters, scene.x);
  scene.range = RangeOf(scene.clean);
  scene.sigma = measurement.noise * scene.range;
  for (double& y : scene.y) y += scene.sigma * chance.Normal();
  Numbers near = scene.parameters;
  near.back() = chance.Between(0.3, 3);
  return FitScene(family, near, scene, chance);
}

struct Tally {
  int fits = 0, trusted = 0, untested = 0, doubted = 0, unfinished = 0;
};

void Count(const FitResult& result, Tally& tally) {
  ++tally.fits;
  const Said said = SaidOf(result.verdict);
  if (said == Said::Trusted) {
    ++tally.trusted;
  } else if (said == Said::Untested) {
    ++tally.untested;
  } else {
    ++(HasConverged(result) ? tally.doubted : tally.unfinished);
  }
}

}  // namespace

void TellLimits(int repeats, std::uint64_t seed) {
  std::cout << "\n| a limit | fits | trusted | untested | doubted | not finished |\n"
            << "|---|---|---|---|---|---|\n";
  for (const Family& family : kFamilies) {
    Tally tally;
    for (const int points : kPoints) {
      for (const double noise : kNoises) {
        for (int i = 0; i < repeats; ++i) {
          seed = MixBits(seed + 1);
          Count(FitLimit(family, {points, noise, seed}), tally);
        }
      }
    }
    std::cout << "| " << family.name << " | " << tally.fits << " | " << tally.trusted << " | "
              << tally.untested << " | " << tally.doubted << " | " << tally.unfinished << " |\n";
  }
}

}  // namespace tarnwick::bench
