#include "results/tools/unit_names.h"

#include "base/number_text.h"

namespace tarnwick {
namespace {

bool IsOneSymbol(const std::string& unit) {
  return unit.find_first_of("/*. ^") == std::string::npos;
}

std::string Bracketed(const std::string& unit) {
  return IsOneSymbol(unit) ? unit : "(" + unit + ")";
}

}  // namespace

NamedUnit SplitNamedUnit(std::string_view title) {
  const std::string_view text = TrimBlanks(title);
  if (!text.empty() && (text.back() == ')' || text.back() == ']')) {
    const std::size_t open = text.rfind(text.back() == ')' ? '(' : '[');
    if (open != std::string_view::npos && open > 0) {
      return {std::string(TrimBlanks(text.substr(0, open))),
              std::string(TrimBlanks(text.substr(open + 1, text.size() - open - 2)))};
    }
  }
  const std::size_t slash = text.find('/');
  const bool parted = slash != std::string_view::npos && slash > 0 && slash + 1 < text.size();
  if (parted && text.find(' ', slash) == std::string_view::npos)
    return {std::string(text.substr(0, slash)), std::string(text.substr(slash + 1))};
  return {std::string(text), {}};
}

NamedUnit XNameOf(const ToolInput& input) {
  NamedUnit x = SplitNamedUnit(input.Source().Source().XDataColumn);
  if (x.unit.empty() && input.x == XMeans::Dates) x.unit = "d";
  return x;
}

std::string TitleOf(const NamedUnit& named) {
  return named.unit.empty() ? named.name : named.name + " (" + named.unit + ")";
}

std::string InverseUnit(const std::string& unit) {
  if (unit.empty()) return {};
  if (unit == "s") return "Hz";
  if (unit == "ms") return "kHz";
  if (unit == "Hz") return "s";
  return "1/" + Bracketed(unit);
}

std::string SquaredUnit(const std::string& unit) {
  return unit.empty() ? std::string() : Bracketed(unit) + "²";
}

}  // namespace tarnwick
