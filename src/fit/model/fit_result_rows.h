// The rows in which the result of a fit is stored, one table: a word, the texts that tell it, and how a text is taken back. Knows
// results; no key and no file.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fit/fit_result.h"

namespace tarnwick {

struct FitResultRow {
  std::string_view word;
  /// As many as there are; none where there is nothing to tell.
  std::vector<std::string> (*texts)(const FitResult&);
  /// False for a text that makes no sense.
  bool (*take)(FitResult&, std::string_view);
};
/// In the order in which they are written. What the verdict's sentences were made from is not among them: the sentences are.
std::span<const FitResultRow> FitResultRows();

/// True when lists are as long as one another and what they number is there.
bool IsWhole(const FitResult& result);

/// How much a verdict trusts: 0 doubtful, 1 untested, 2 trustworthy.
int TrustOf(const FitVerdict& verdict);
bool TakeTrust(FitVerdict& verdict, std::string_view text);

/// Takes the first word of a text away, with the blank behind it.
std::string_view TakeWord(std::string_view& text);
/// A whole number not below 0.
std::optional<std::int64_t> ParseCount(std::string_view text);

}  // namespace tarnwick
