#include "data/fields/row_remark.h"

#include "base/ascii.h"

namespace tarnwick {

std::string_view WithoutRemark(std::string_view line, const TextLayout& layout, Before before) {
  constexpr std::string_view kOfNumbers = "+-.eEdD,; \t";
  constexpr std::string_view kSeparators = ",;\t|";
  const char* const end = line.data() + line.size();
  bool digits = false;
  bool words = false;
  bool separators = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (IsDigit(c)) {
      digits = true;
      continue;
    }
    if (digits && IsBlankByte(line[i - 1]) && layout.BeginsComment(line.data() + i, end)) {
      // "#2" among words is a name.
      const bool apart = (i + 1 == line.size() || IsBlankByte(line[i + 1])) && c != '*' && c != '>';
      if (!words || apart) return line.substr(0, i);
    }
    separators = separators || kSeparators.find(c) != kSeparators.npos;
    words = words || kOfNumbers.find(c) == kOfNumbers.npos;
    if (words && (separators || before == Before::Numbers)) return line;
  }
  return line;
}

}  // namespace tarnwick
