// How often the verdict of a fit trusts what is wrong, and doubts what is right: simulated measurements of which the truth is
// known. Usage: verdict_simulation [REPEATS [SEED [list | terms]]]; with "list" each of both is told on a line, with "terms" only
// models with a term that may not be there are fitted, and told in the same way.
#include <array>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/split_mix.h"
#include "limit_table.h"
#include "simulated_fit.h"
#include "term_table.h"

namespace tarnwick::bench {
namespace {

constexpr int kPoints[] = {5, 6, 7, 8, 10, 12, 15, 20, 30, 50, 100, 300, 1000};
constexpr double kNoises[] = {0, 0.001, 0.01, 0.03, 0.1};
/// Numbers of points that are told together, by their greatest.
constexpr int kClasses[] = {8, 15, 50, 1000};

struct Tally {
  int fits = 0;
  int trusted = 0;
  int untested = 0;
  int doubted = 0;
  int unfinished = 0;  ///< of those doubted
};

struct Tallies {
  std::map<int, Tally> right;
  std::map<int, Tally> wrong;
  std::map<int, Tally> spoiled;  ///< and wrong by it
};

int ClassOf(int points) {
  for (const int greatest : kClasses) {
    if (points <= greatest) return greatest;
  }
  return kClasses[std::size(kClasses) - 1];
}

void Count(const SimulatedFit& fit, Tallies& all) {
  if (fit.truth == Truth::Between) return;
  Tally& tally = (fit.truth == Truth::Right ? all.right
                  : fit.spoiled             ? all.spoiled
                                            : all.wrong)[ClassOf(fit.measurement.points)];
  ++tally.fits;
  tally.trusted += fit.said == Said::Trusted ? 1 : 0;
  tally.untested += fit.said == Said::Untested ? 1 : 0;
  tally.doubted += fit.said == Said::Doubted ? 1 : 0;
  tally.unfinished += fit.said == Said::Doubted && fit.unfinished ? 1 : 0;
}

bool IsError(const SimulatedFit& fit) {
  return (fit.truth == Truth::Wrong && fit.said == Said::Trusted) ||
         (fit.truth == Truth::Right && fit.said == Said::Doubted && !fit.unfinished);
}

void List(const SimulatedFit& fit) {
  std::cout << (fit.truth == Truth::Wrong ? "missed: " : "false alarm: ") << fit.trial.fitted->name
            << " fitted to " << fit.trial.truth->name << (fit.spoiled ? ", spoiled" : "") << ", "
            << fit.measurement.points << " points, noise " << fit.measurement.noise << ", seed "
            << fit.measurement.seed << ": " << fit.result.verdict.summary << '\n';
}

void Print(std::string_view title, const std::map<int, Tally>& tallies) {
  std::cout << "\n| " << title << " | fits | trusted | untested | doubted | not finished |\n"
            << "|---|---|---|---|---|---|\n";
  Tally all;
  int least = kPoints[0];
  const auto line = [](const std::string& name, const Tally& one) {
    std::cout << "| " << name << " | " << one.fits << " | " << one.trusted << " | " << one.untested
              << " | " << one.doubted - one.unfinished << " | " << one.unfinished << " |\n";
  };
  for (const auto& [greatest, tally] : tallies) {
    line(std::to_string(least) + " to " + std::to_string(greatest) + " points", tally);
    least = greatest + 1;
    all.fits += tally.fits;
    all.trusted += tally.trusted;
    all.untested += tally.untested;
    all.doubted += tally.doubted;
    all.unfinished += tally.unfinished;
  }
  line("all", all);
}

void Run(int repeats, std::uint64_t seed, bool list) {
  Tallies tallies;
  int fits = 0;
  for (const Trial& trial : AllTrials()) {
    for (const int points : kPoints) {
      if (points <= static_cast<int>(trial.fitted->parameters.size())) continue;
      for (const double noise : kNoises) {
        for (int i = 0; i < repeats; ++i, ++fits) {
          seed = MixBits(seed + 1);
          const SimulatedFit fit = SimulateFit(trial, {points, noise, seed});
          Count(fit, tallies);
          if (list && IsError(fit)) List(fit);
        }
      }
    }
  }
  std::cout << fits << " fits\n";
  Print("right", tallies.right);
  Print("wrong", tallies.wrong);
  Print("wrong, one point spoiled", tallies.spoiled);
}

}  // namespace
}  // namespace tarnwick::bench

int main(int count, char** arguments) {
  const std::span<char*> given(arguments, static_cast<std::size_t>(count));
  const int repeats = given.size() > 1 ? std::atoi(given[1]) : 1;
  const std::uint64_t seed = given.size() > 2 ? std::strtoull(given[2], nullptr, 10) : 1;
  const std::string_view how = given.size() > 3 ? given[3] : "";
  using tarnwick::bench::Listing;
  if (how != "terms") tarnwick::bench::Run(repeats, seed, how == "list");
  tarnwick::bench::TellTerms(repeats, seed, how.empty() ? Listing::None : Listing::Errors);
  tarnwick::bench::TellLimits(repeats, seed);
  return 0;
}
