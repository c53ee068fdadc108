// A DataSet made smoother, or its smooth derivative.
#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "analysis/local_noise.h"
#include "analysis/smoothing.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/column_caption.h"
#include "results/tools/tool_table.h"

namespace tarnwick {
namespace {

enum class Method { Polynomials, Median };
constexpr std::array kMethods = {FieldChoice{Method::Polynomials, "Savitzky-Golay"},
                                 FieldChoice{Method::Median, "Median, of the window"}};
const char* const kDerivatives[] = {"", "DIF of ", "second DIF of "};

bool FitsPolynomials(const ToolSettings& settings) {
  return settings.Chosen<Method>("method") == Method::Polynomials;
}

const ToolSetting kSettings[] = {
    {"method", "Method", control::ChoiceOf(kMethods), std::int32_t{0},
     "How values are made smooth"},
    {"window", "Window", control::WholeWithin(1, 9999, "points"), std::int32_t{11},
     "Points that a value is made from, odd", nullptr, 2},
    {"order", "Polynomial's order", control::WholeWithin(0, 9), std::int32_t{2},
     "Degree of the polynomials", FitsPolynomials},
    {"derivative", "Derivative", control::WholeWithin(0, 2), std::int32_t{0},
     "Derivative that is made", FitsPolynomials},
};

/// Where the X within a window are too few for the polynomial. Throws Error where that is everywhere.
std::string LackingText(const std::vector<double>& y) {
  const auto lacking = std::ranges::count_if(y, [](double value) { return std::isnan(value); });
  if (lacking == 0) return {};
  if (lacking == std::ssize(y))
    throw Error("No window has points at enough different X for a polynomial of this order.");
  return Counted(lacking, "point") + " without a value: too few different X in the window.";
}

bool Narrow(ToolSettings& settings, std::size_t points, std::size_t whole) {
  CheckWindow(settings.Whole("window"), whole);
  const int window = std::min(settings.Whole("window"), LargestWindow(points));
  if (window < 1 || (FitsPolynomials(settings) && window <= settings.Whole("order"))) return false;
  settings.SetWhole("window", window);
  return true;
}

Computed Compute(const ToolInput& input) {
  const TSeries& source = input.Source();
  ToolColumns columns = ColumnsOf(source);
  const LocalPolynomial local = {input.settings.Whole("window"), input.settings.Whole("order"),
                                 input.settings.Whole("derivative")};
  if (!FitsPolynomials(input.settings)) {
    columns.y = RunningMedian(columns.y, local.window, input.cancel);
    return {SeriesLike(source, columns.x, columns.y), LeftOutText(source, columns)};
  }
  const double noise = NoiseOf({columns.x, columns.y});
  const Smoothed smooth = SmoothByPolynomials(columns.x, columns.y, local, input.cancel);
  std::string told;
  if (std::isfinite(smooth.noise_gain)) {
    const std::string left = GeneralText(noise * smooth.noise_gain, 3);
    told = "The noise of Y, " + GeneralText(noise, 3) + " as neighbouring points scatter, ";
    told += local.derivative > 0 ? "makes one of " + left + " in the derivative."
                                 : "is reduced to " + left + ".";
  }
  AddSentence(told, LackingText(smooth.y));
  AddSentence(told, LeftOutText(source, columns));
  return {SeriesLike(source, columns.x, smooth.y, {},
                     kDerivatives[local.derivative] + CaptionOfY(source.Source())),
          told};
}

}  // namespace

constinit const Tool kSmoothTool = {.name = "smooth",
                                    .caption = "Smoothing",
                                    .purpose = "A DataSet made smoother, or its smooth derivative",
                                    .suffix = "_SMO",
                                    .settings = kSettings,
                                    .along = Always<AlongLine::Pieces>,
                                    .narrow = &Narrow,
                                    .compute = Compute};

}  // namespace tarnwick
