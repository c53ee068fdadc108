#include "families.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tarnwick::bench {
namespace {

using enum Meaning;

const Family kFitted[] = {
    {"line", "a*x+b", {{"a", 0.3, 3, Height}, {"b", -3, 3}}},
    {"parabola", "a*x^2+b*x+c", {{"a", 0.1, 1, Height}, {"b", -3, 3}, {"c", -3, 3}}},
    {"cubic",
     "a*x^3+b*x^2+c*x+d",
     {{"a", 0.05, 0.2, Height}, {"b", -2, -0.5}, {"c", -3, 3}, {"d", -3, 3}}},
    {"bare decay", "a*exp(-x/t)", {{"a", 1, 10, Height}, {"t", 1, 6, Size}}},
    {"decay", "a*exp(-x/t)+c", {{"a", 1, 10, Height}, {"t", 1, 4, Size}, {"c", -1, 2}}},
    {"two decays",
     "a*exp(-x/t)+b*exp(-x/u)+c",
     {{"a", 3, 10, Height}, {"t", 0.3, 0.8, Size}, {"b", 3, 6}, {"u", 2.5, 4, Size}, {"c", 0, 2}}},
    {"gaussian",
     "a*exp(0-((x-b)/c)^2/2)+d",
     {{"a", 2, 10, Height}, {"b", 3, 7, Place}, {"c", 0.6, 2, Size}, {"d", 0, 2}}},
    {"lorentzian",
     "a/(1+((x-b)/c)^2)+d",
     {{"a", 2, 10, Height}, {"b", 3, 7, Place}, {"c", 0.6, 2, Size}, {"d", 0, 2}}},
    {"two gaussians",
     "a*exp(0-((x-b)/c)^2/2)+e*exp(0-((x-f)/g)^2/2)+d",
     {{"a", 4, 10, Height},
      {"b", 2, 4, Place},
      {"c", 0.5, 0.8, Size},
      {"e", 4, 10},
      {"f", 6, 8, Place},
      {"g", 0.5, 0.8, Size},
      {"d", 0, 2}}},
    {"sine",
     "a*sin(2*pi*x/P+f)+d",
     {{"a", 1, 5, Height}, {"P", 2.2, 8, Size}, {"f", -1.5, 1.5, Place}, {"d", -1, 1}}},
    {"damped sine",
     "a*exp(-x/t)*sin(2*pi*x/P+f)+d",
     {{"a", 2, 5, Height},
      {"t", 3, 10, Size},
      {"P", 1.5, 4, Size},
      {"f", -1.5, 1.5, Place},
      {"d", -1, 1}}},
    {"logistic",
     "a/(1+exp(0-(x-b)/c))+d",
     {{"a", 2, 6, Height}, {"b", 3.5, 6.5, Place}, {"c", 0.4, 1.2, Size}, {"d", -1, 1}}},
    {"hill", "a*x^n/(k^n+x^n)", {{"a", 2, 6, Height}, {"n", 1.5, 3.5, Size}, {"k", 2, 5, Size}}},
    {"saturation", "a*x/(k+x)", {{"a", 2, 6, Height}, {"k", 1, 4, Size}}},
    {"power", "a*x^b", {{"a", 0.5, 3, Height}, {"b", 0.4, 2.5, Size}}, 0.1},
    {"arrhenius", "a*exp(0-b/x)", {{"a", 2, 9, Height}, {"b", 1, 5, Size}}, 1},
    {"growth", "a*(1-exp(-x/t))", {{"a", 2, 9, Height}, {"t", 1, 4, Size}}},
    {"hyperbola", "a/(x+b)+c", {{"a", 2, 9, Height}, {"b", 0.5, 3, Size}, {"c", -1, 1}}},
    {"logarithm", "a*ln(x+b)+c", {{"a", 1, 4, Height}, {"b", 0.3, 2, Size}, {"c", -1, 1}}},
    {"pseudo-voigt",
     "a*(m/(1+((x-b)/c)^2)+(1-m)*exp(0-((x-b)/c)^2*0.6931))+d",
     {{"a", 4, 10, Height},
      {"b", 3, 7, Place},
      {"c", 0.6, 1.6, Size},
      {"m", 0.2, 0.8, Place},
      {"d", 0, 2}}},
    {"gompertz",
     "a*exp(0-b*exp(-c*x))",
     {{"a", 3, 8, Height}, {"b", 2, 6, Size}, {"c", 0.4, 1, Size}}},
};

const Family kOnlyTruths[] = {
    {"two sines",
     "a*sin(2*pi*x/P)+b*sin(2*pi*x/Q+f)",
     {{"a", 2, 5}, {"P", 4, 6}, {"b", 1, 2}, {"Q", 1.3, 2.2}, {"f", 0, 1}}},
    {"gaussian on a ramp",
     "a*exp(0-((x-b)/c)^2/2)+d*x",
     {{"a", 2, 10}, {"b", 3, 7}, {"c", 0.6, 2}, {"d", 0.2, 0.6}}},
    {"chirp",
     "a*sin(2*pi*x/(P+g*x))+d",
     {{"a", 1, 5}, {"P", 2.2, 4}, {"g", 0.05, 0.2}, {"d", -1, 1}}},
    {"growth and decay", "a*(exp(-x/t)-exp(-x/u))", {{"a", 3, 8}, {"t", 3, 5}, {"u", 0.5, 1.5}}},
};

struct Mismatch {
  std::string_view fitted;
  std::string_view truth;
};

constexpr Mismatch kMismatches[] = {
    {"line", "parabola"},
    {"line", "growth"},
    {"line", "logistic"},
    {"line", "sine"},
    {"parabola", "cubic"},
    {"parabola", "logistic"},
    {"bare decay", "decay"},
    {"bare decay", "power"},
    {"bare decay", "hyperbola"},
    {"decay", "two decays"},
    {"decay", "growth and decay"},
    {"gaussian", "lorentzian"},
    {"lorentzian", "gaussian"},
    {"gaussian", "two gaussians"},
    {"gaussian", "gaussian on a ramp"},
    {"lorentzian", "gaussian on a ramp"},
    {"sine", "damped sine"},
    {"sine", "two sines"},
    {"sine", "chirp"},
    {"saturation", "hill"},
    {"growth", "hill"},
    {"growth", "logistic"},
    {"power", "growth"},
    {"power", "logistic"},
    {"hill", "gaussian on a ramp"},
    {"logistic", "gaussian"},
    {"damped sine", "two sines"},
    {"cubic", "sine"},
    {"decay", "gompertz"},
    {"arrhenius", "logistic"},
};

const Family* Find(std::string_view name) {
  const auto named = [&](const Family& family) { return family.name == name; };
  const Family* const fitted = std::ranges::find_if(kFitted, named);
  return fitted != std::end(kFitted) ? fitted : std::ranges::find_if(kOnlyTruths, named);
}

}  // namespace

std::vector<Trial> AllTrials() {
  std::vector<Trial> trials;
  for (const Family& family : kFitted) trials.push_back({&family, &family});
  for (const Mismatch& pair : kMismatches) trials.push_back({Find(pair.fitted), Find(pair.truth)});
  return trials;
}

}  // namespace tarnwick::bench
