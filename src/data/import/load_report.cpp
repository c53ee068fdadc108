#include "data/import/load_report.h"

#include <span>
#include <utility>

#include "base/number_text.h"
#include "data/block_source.h"

namespace tarnwick {
namespace {

std::string Ordinal(std::int32_t number) {
  const std::int32_t tens = number % 100;
  const bool teen = tens >= 11 && tens <= 13;
  const char* const endings[] = {"th", "st", "nd", "rd"};
  return std::to_string(number) + (!teen && number % 10 <= 3 ? endings[number % 10] : "th");
}

using Reason = std::pair<std::int64_t, const char*>;

/// "1 X empty, 2 Y empty"; the reason alone where it is the only one.
std::string ReasonList(std::span<const Reason> reasons, std::int64_t all) {
  std::string list;
  for (const auto& [count, reason] : reasons) {
    if (count == all) return reason;
    if (count > 0) list += (list.empty() ? "" : ", ") + std::to_string(count) + " " + reason;
  }
  return list;
}

std::string TextOf(const UnusableErrors& errors, const std::string& of) {
  if (errors.no_column) return "no column gives the errors of " + of;
  if (errors.All() == 0) return {};
  const Reason reasons[] = {{errors.missing, "empty"},
                            {errors.not_number, "not a number"},
                            {errors.zero, "zero"},
                            {errors.negative, "negative"}};
  return Counted(errors.All(), "row") + (errors.All() == 1 ? " gives" : " give") +
         " no usable error of " + of + " (" + ReasonList(reasons, errors.All()) + ")";
}

}  // namespace

std::int64_t LoadReport::Skipped() const {
  return x_missing + y_missing + x_not_number + y_not_number;
}

void LoadReport::AddSkipped(SkipReason reason, std::int64_t line) {
  if (Skipped() == 0) {
    first_reason = reason;
    first_skipped_line = line;
  }
  switch (reason) {
    case SkipReason::XMissing:
      ++x_missing;
      break;
    case SkipReason::YMissing:
      ++y_missing;
      break;
    case SkipReason::XNotNumber:
      ++x_not_number;
      break;
    case SkipReason::YNotNumber:
      ++y_not_number;
      break;
  }
}

void UnusableErrors::Count(double error) {
  if (error > 0) return;
  std::int64_t& kind = error < 0               ? negative
                       : error == 0            ? zero
                       : IsMissingValue(error) ? missing
                                               : not_number;
  ++kind;
}

std::string LoadReport::SampledText() const {
  return sampled_every > 1 ? "every " + Ordinal(sampled_every) + " row" : std::string();
}

std::string LoadReport::ShownText() const {
  const std::string sampled = SampledText();
  return sampled.empty() ? sampled : sampled + " is shown";
}

std::string LoadReport::SkippedText() const {
  if (Skipped() == 0) return {};
  const Reason reasons[] = {
      {x_missing, "X empty"},
      {y_missing, "Y empty"},
      {x_not_number, x_is_date ? "X no date of the calendar" : "X not a number"},
      {y_not_number, "Y not a number"}};
  const std::string list = ReasonList(reasons, Skipped());
  return Counted(Skipped(), "row") + " skipped (" + list + "; first at line " +
         std::to_string(first_skipped_line) + ")";
}

std::string LoadReport::ReplacedText() const {
  if (replaced <= 0) return {};
  return Counted(replaced, "row") + " replaced by later ones at the same X";
}

std::string LoadReport::MovedText() const {
  return found_at.empty() ? "" : "read from " + found_at + ", where it lies beside the graph now";
}

std::string LoadReport::RunsText() const {
  if (run == 0 || runs < 2) return "";
  const std::string all =
      "the file holds " + std::to_string(runs) + " runs parted by empty lines or remarks, ";
  return all + (runs_read == runs ? "each is a DataSet of its own"
                                  : std::to_string(runs_read) + " of them are DataSets");
}

std::string LoadReport::LeftOutText() const {
  if (left_out_from == 0) return "";
  return "the lines from " + std::to_string(left_out_from) +
         " on are no part of the table and left out";
}

std::string LoadReport::ErrorsText() const {
  const std::string y = TextOf(y_errors, "Y");
  const std::string x = TextOf(x_errors, "X");
  return y + (y.empty() || x.empty() ? "" : "; ") + x;
}

std::string LoadReport::Message() const {
  if (!loaded) return cancelled ? "Cancelled, nothing was loaded" : "Nothing was loaded";
  std::string text = Counted(points, "point");
  if (sampled_every > 1) text += ", " + SampledText();
  for (const std::string& part : {SkippedText(), ReplacedText(), ErrorsText(), MovedText()}) {
    if (!part.empty()) text += "; " + part;
  }
  if (cancelled) text += "; cancelled";
  return text;
}

}  // namespace tarnwick
