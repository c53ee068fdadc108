#include "fit/judge/fit_verdict.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "fit/judge/fit_findings.h"
#include "fit/judge/test_power.h"
#include "fit/judge/verdict_notes.h"

namespace tarnwick {

FitVerdict JudgeFit(const FitResult& result, const FitCircumstances& circumstances) {
  FitVerdict verdict;
  const bool holds = Ran(result) && HasConverged(result) && !circumstances.extreme_data &&
                     AllDetermined(result) && ModelHolds(result) && !PointsLost(result);
  verdict.untested = holds && FindTestGap(result) != TestGap::None;
  verdict.trustworthy = holds && !verdict.untested;
  verdict.summary = VerdictSummary(result, circumstances);
  verdict.notes = VerdictNotes(result, circumstances);
  return verdict;
}

FitVerdict JudgeJointFit(const FitResult& whole, const FitCircumstances& circumstances,
                         std::span<const FitShare> shares) {
  FitResult tested = whole;  // in its shares
  tested.residuals.freedom = whole.statistics.degrees_of_freedom;
  FitVerdict verdict = JudgeFit(tested, circumstances);
  if (!verdict.trustworthy) return verdict;
  const auto trusted = [](const FitShare& share) { return share.result->verdict.trustworthy; };
  const auto doubted = [&](const FitShare& share) {
    return !trusted(share) && !share.result->verdict.untested;
  };
  const std::int64_t others = std::ssize(shares) - std::ranges::count_if(shares, trusted) - 1;
  if (others < 0) return verdict;
  auto gravest = std::ranges::find_if(shares, doubted);
  if (gravest == shares.end()) gravest = std::ranges::find_if_not(shares, trusted);
  verdict.trustworthy = false;
  verdict.untested = gravest->result->verdict.untested;
  verdict.summary = JointSummary(whole, circumstances, *gravest, others);
  return verdict;
}

}  // namespace tarnwick
