#include "data/import/load_report.h"

#include <utility>

#include "base/number_text.h"

namespace tarnwick {
namespace {

std::string Ordinal(std::int32_t number) {
  const std::int32_t tens = number % 100;
  const bool teen = tens >= 11 && tens <= 13;
  const char* const endings[] = {"th", "st", "nd", "rd"};
  return std::to_string(number) + (!teen && number % 10 <= 3 ? endings[number % 10] : "th");
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

std::string LoadReport::SampledText() const {
  return sampled_every > 1 ? "every " + Ordinal(sampled_every) + " row" : std::string();
}

std::string LoadReport::SkippedText() const {
  if (Skipped() == 0) return {};
  const std::pair<std::int64_t, const char*> reasons[] = {{x_missing, "X empty"},
                                                          {y_missing, "Y empty"},
                                                          {x_not_number, "X not a number"},
                                                          {y_not_number, "Y not a number"}};
  std::string list;
  for (const auto& [count, reason] : reasons) {
    if (count == Skipped()) {
      list = reason;
    } else if (count > 0) {
      list += (list.empty() ? "" : ", ") + std::to_string(count) + " " + reason;
    }
  }
  return Counted(Skipped(), "row") + " skipped (" + list + "; first at line " +
         std::to_string(first_skipped_line) + ")";
}

std::string LoadReport::ReplacedText() const {
  if (replaced <= 0) return {};
  return Counted(replaced, "row") + " replaced by later ones at the same X";
}

std::string LoadReport::MovedText() const {
  return found_at.empty() ? "" : "read from " + found_at + ", since the source has moved";
}

std::string LoadReport::Message() const {
  if (!loaded) return cancelled ? "Cancelled, nothing was loaded" : "Nothing was loaded";
  std::string text = Counted(points, "point");
  if (sampled_every > 1) text += ", " + SampledText();
  for (const std::string& part : {SkippedText(), ReplacedText(), MovedText()}) {
    if (!part.empty()) text += "; " + part;
  }
  if (cancelled) text += "; cancelled";
  return text;
}

}  // namespace tarnwick
