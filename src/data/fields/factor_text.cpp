#include "data/fields/factor_text.h"

#include <string>

#include "base/number_text.h"
#include "data/fields/text_fields.h"

namespace tarnwick {
namespace {

struct Factor {
  std::string_view letter;
  int exponent;
};
constexpr Factor kFactors[] = {{"f", -15}, {"p", -12}, {"n", -9}, {"u", -6},  {"\xC2\xB5", -6},
                               {"m", -3},  {"k", 3},   {"K", 3},  {"Meg", 6}, {"meg", 6},
                               {"MEG", 6}, {"M", 6},   {"G", 9},  {"T", 12}};

}  // namespace

std::optional<NumberAndFactor> SplitFactor(std::string_view text) {
  text = TrimBlankBytes(text);
  for (const Factor& factor : kFactors) {
    if (!text.ends_with(factor.letter)) continue;
    const std::string_view number = text.substr(0, text.size() - factor.letter.size());
    if (number.empty() || number.find('.') == number.npos ||
        number.find_first_not_of("0123456789.+-") != number.npos) {
      continue;
    }
    const std::optional<double> value =
        ParseNumber(std::string(number) + "e" + std::to_string(factor.exponent));
    if (value) return NumberAndFactor{*value, factor.letter};
  }
  return std::nullopt;
}

std::optional<double> ValueWithFactor(std::string_view text) {
  if (const auto split = SplitFactor(text)) return split->value;
  return ParseNumber(TrimBlankBytes(text));
}

}  // namespace tarnwick
