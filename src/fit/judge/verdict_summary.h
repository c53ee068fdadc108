// The verdict's one sentence: how the fit ended and what the data say of it, the gravest first. Computes no figure.
#pragma once

#include <cstdint>
#include <string>

#include "fit/fit_result.h"
#include "fit/judge/fit_circumstances.h"

namespace tarnwick {

/// One DataSet's part in a fit of several, all borrowed.
struct FitShare {
  std::string data_set;
  const FitResult* result = nullptr;
  const FitCircumstances* about = nullptr;
  /// It has the function of all others and a parameter in common with some: residuals of all together test it.
  bool tested_by_all = false;
};

/// Of a fit that did not begin: why.
std::string VerdictSummary(const FitResult& result, const FitCircumstances& about);

/// Why no point is left to fit: none between the margins had an error to weigh it by, or none a finite Y.
std::string NoPointsText(std::int64_t without_error, std::int64_t undefined);

/// Of a fit of several DataSets in whose numbers one speaks against it, and `others` beside it.
std::string JointSummary(const FitResult& whole, const FitCircumstances& about,
                         const FitShare& doubted, std::int64_t others);

/// Of a share that only all together test, and found nothing against.
std::string SummaryByAll(const FitShare& share);
/// What makes the difference: "The 5 points of DataSet "A" alone would hardly test the model, …".
std::string NoteByAll(const FitShare& share, const FitResult& whole);

}  // namespace tarnwick
