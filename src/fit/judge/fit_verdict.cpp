#include "fit/judge/fit_verdict.h"

#include "fit/judge/fit_findings.h"
#include "fit/judge/verdict_notes.h"
#include "fit/judge/verdict_summary.h"

namespace tarnwick {

FitVerdict JudgeFit(const FitResult& result, const FitCircumstances& circumstances) {
  FitVerdict verdict;
  verdict.trustworthy = Ran(result) && HasConverged(result) && !circumstances.extreme_data &&
                        AllDetermined(result) && ModelHolds(result) && CanBeChecked(result) &&
                        !PointsLost(result);
  verdict.summary = VerdictSummary(result, circumstances);
  verdict.notes = VerdictNotes(result, circumstances);
  return verdict;
}

}  // namespace tarnwick
