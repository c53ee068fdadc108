#include "data/text/row_remark.h"

#include "base/ascii.h"

namespace tarnwick {

std::string_view WithoutRemark(std::string_view line, const TextLayout& layout) {
  constexpr std::string_view kOfNumbers = "+-.eEdD,; \t";
  const char* const end = line.data() + line.size();
  bool digits = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (IsDigit(c)) {
      digits = true;
    } else if (digits && IsBlankByte(line[i - 1]) && layout.BeginsComment(line.data() + i, end)) {
      return line.substr(0, i);
    } else if (kOfNumbers.find(c) == kOfNumbers.npos) {
      return line;
    }
  }
  return line;
}

}  // namespace tarnwick
