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
  const bool holds = Ran(result) && HasConverged(result) && !circumstances.ignores_x &&
                     !circumstances.extreme_data && AllDetermined(result) && ModelHolds(result) &&
                     !PointsLost(result);
  verdict.untested = holds && FindTestGap(result) != TestGap::None;
  verdict.trustworthy = holds && !verdict.untested;
  verdict.summary = VerdictSummary(result, circumstances);
  verdict.notes = VerdictNotes(result, circumstances);
  return verdict;
}

FitVerdict JudgeJointFit(const FitResult& whole, const FitCircumstances& circumstances,
                         std::span<const FitShare> shares) {
  FitResult tested = whole;
  // Where they were not tested together, in the shares.
  if (tested.residuals.freedom == 0) tested.residuals.freedom = whole.statistics.degrees_of_freedom;
  FitVerdict verdict = JudgeFit(tested, circumstances);
  if (!verdict.trustworthy) return verdict;
  const auto doubted = [](const FitShare& share) {
    return !share.result->verdict.trustworthy && !share.result->verdict.untested;
  };
  const auto untested = [](const FitShare& share) {
    return share.result->verdict.untested && !share.tested_by_all;
  };
  auto gravest = std::ranges::find_if(shares, doubted);
  if (gravest == shares.end()) gravest = std::ranges::find_if(shares, untested);
  if (gravest == shares.end()) return verdict;
  const std::int64_t others =
      std::ranges::count_if(shares, doubted) + std::ranges::count_if(shares, untested) - 1;
  verdict.trustworthy = false;
  verdict.untested = gravest->result->verdict.untested;
  verdict.summary = JointSummary(whole, circumstances, *gravest, others);
  return verdict;
}

FitVerdict JudgeShare(const FitShare& share, const FitResult& whole) {
  FitVerdict verdict = share.result->verdict;
  if (!verdict.untested || !share.tested_by_all || !whole.verdict.trustworthy) return verdict;
  verdict.untested = false;
  verdict.trustworthy = true;
  verdict.summary = SummaryByAll(share);
  verdict.notes.insert(verdict.notes.begin(), NoteByAll(share, whole));
  return verdict;
}

}  // namespace tarnwick
