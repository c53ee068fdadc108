#include "term_table.h"

#include <cmath>
#include <iostream>
#include <map>
#include <optional>
#include <string>

#include "base/split_mix.h"
#include "chance.h"
#include "extra_term.h"

namespace tarnwick::bench {
namespace {

constexpr int kPoints[] = {20, 30, 50, 100, 300, 1000};
constexpr double kNoises[] = {0.003, 0.01, 0.03, 0.1};
/// Deviations of a term that is there: from the least on, by equal ratios.
constexpr double kLeast = 5;
constexpr double kGreatest = 40;
/// Below it a term is told apart.
constexpr double kFaint = 7;

struct Tally {
  int fits = 0;
  int trusted = 0;
  int untested = 0;
  int absent = 0;     ///< doubted, and a term said to be absent
  int otherwise = 0;  ///< doubted without that
  int unfinished = 0;
};

void Count(const TermFit& fit, Tally& tally) {
  ++tally.fits;
  tally.trusted += fit.said == Said::Trusted ? 1 : 0;
  tally.untested += fit.said == Said::Untested ? 1 : 0;
  if (fit.said != Said::Doubted) return;
  ++(fit.unfinished ? tally.unfinished : fit.told_absent ? tally.absent : tally.otherwise);
}

void Print(const std::map<std::string, Tally>& tallies) {
  std::cout << "\n| a term | fits | trusted | untested | called absent | doubted otherwise | not "
               "finished |\n|---|---|---|---|---|---|---|\n";
  for (const auto& [name, one] : tallies) {
    std::cout << "| " << name << " | " << one.fits << " | " << one.trusted << " | " << one.untested
              << " | " << one.absent << " | " << one.otherwise << " | " << one.unfinished << " |\n";
  }
}

void List(const TermTrial& trial, const Measurement& measurement, const TermFit& fit) {
  std::cout << (fit.significance ? "called absent: " : "trusted: ") << trial.family.name << ", "
            << measurement.points << " points, noise " << measurement.noise << ", seed "
            << measurement.seed << ", " << fit.significance.value_or(0) << " deviations";
  for (std::size_t i = 0; i < fit.result.values.size(); ++i) {
    std::cout << ' ' << fit.result.names[i] << '=' << fit.result.values[i] << "±"
              << fit.result.statistics.standard_errors[i];
  }
  for (const AbsentTerm& one : fit.result.absent)
    std::cout << "; " << fit.result.names[static_cast<std::size_t>(one.parameter)] << " gains "
              << one.gain << " by chance " << one.chance;
  std::cout << ": " << fit.result.verdict.summary << '\n';
}

/// Of what is there only fits that found it tell whether it is missed; what stands out by less nobody could find for sure.
void CountBoth(const TermTrial& trial, const Measurement& measurement, Listing listing,
               std::map<std::string, Tally>& tallies) {
  const TermFit without = SimulateTerm(trial, measurement, std::nullopt);
  Count(without, tallies["not there, " + trial.family.name]);
  if (listing == Listing::Errors && without.said == Said::Trusted)
    List(trial, measurement, without);
  Chance chance(MixBits(measurement.seed + 7));
  const double height = kLeast * std::pow(kGreatest / kLeast, chance.Uniform());
  const TermFit with = SimulateTerm(trial, measurement, height);
  const double significance = *with.significance;
  if (!with.found || significance < kLeast) return;
  Count(with, tallies[significance < kFaint ? "there, by 5 to 7 deviations"
                                            : "there, by more than 7 deviations"]);
  if (listing == Listing::Errors && with.said == Said::Doubted && with.told_absent)
    List(trial, measurement, with);
}

}  // namespace

void TellTerms(int repeats, std::uint64_t seed, Listing listing) {
  std::map<std::string, Tally> tallies;
  for (const TermTrial& trial : AllTermTrials()) {
    for (const int points : kPoints) {
      for (const double noise : kNoises) {
        for (int i = 0; i < repeats; ++i) {
          seed = MixBits(seed + 1);
          CountBoth(trial, {points, noise, seed}, listing, tallies);
        }
      }
    }
  }
  Print(tallies);
}

}  // namespace tarnwick::bench
