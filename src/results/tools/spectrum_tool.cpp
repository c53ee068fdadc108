// What a DataSet is made of by frequency.
#include "analysis/spectrum.h"

#include <array>
#include <string>

#include "analysis/smoothing.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "results/tools/tool_table.h"
#include "results/tools/unit_names.h"

namespace tarnwick {
namespace {

enum class Method { Automatic, Fft, LombScargle };
constexpr std::array kMethods = {FieldChoice{Method::Automatic, "Automatic, by the spacing of X"},
                                 FieldChoice{Method::Fft, "FFT, of evenly spaced X"},
                                 FieldChoice{Method::LombScargle, "Lomb-Scargle, of any X"}};
constexpr std::array kQuantities = {
    FieldChoice{SpectrumOf::Amplitude, "Amplitude"}, FieldChoice{SpectrumOf::Power, "Power"},
    FieldChoice{SpectrumOf::Density, "Density, power by frequency"}};
constexpr std::array kWindows = {FieldChoice{SpectrumWindow::Rectangular, "None"},
                                 FieldChoice{SpectrumWindow::Hann, "Hann"},
                                 FieldChoice{SpectrumWindow::Hamming, "Hamming"},
                                 FieldChoice{SpectrumWindow::Blackman, "Blackman"},
                                 FieldChoice{SpectrumWindow::FlatTop, "Flat top"}};
constexpr std::array kTrends = {FieldChoice{Trend::None, "Nothing"},
                                FieldChoice{Trend::Mean, "Mean"},
                                FieldChoice{Trend::Line, "Line, through all points"}};
/// Share of a step by which steps may differ and still be taken for even.
constexpr double kEven = 0.01;

bool MayUseWindow(const ToolSettings& settings) {
  return settings.Chosen<Method>("method") != Method::LombScargle;
}

const ToolSetting kSettings[] = {
    {"quantity", "Quantity", control::ChoiceOf(kQuantities),
     static_cast<std::int32_t>(SpectrumOf::Amplitude), "What is told of each frequency"},
    {"method", "Method", control::ChoiceOf(kMethods), static_cast<std::int32_t>(Method::Automatic),
     "How it is found"},
    {"window", "Window", control::ChoiceOf(kWindows),
     static_cast<std::int32_t>(SpectrumWindow::Hann), "What the points are weighed with",
     MayUseWindow},
    {"take-off", "Taken off", control::ChoiceOf(kTrends), static_cast<std::int32_t>(Trend::Mean),
     "What is taken off before"},
    {"finer", "Finer by", control::WholeWithin(1, 32, "×"), std::int32_t{1},
     "So many times more frequencies than the length of the data can tell apart"},
};

struct Chosen {
  bool fft;
  std::string told;
};

Chosen ChooseMethod(Method method, std::span<const double> x) {
  const bool even = IsEvenlySpaced(x, kEven);
  const std::string uneven =
      "X is not evenly spaced (steps differ by more than " + GeneralText(100 * kEven) + " %): ";
  if (method == Method::LombScargle) return {false, {}};
  if (even) return {true, method == Method::Automatic ? "X is evenly spaced: FFT." : ""};
  if (method == Method::Fft) return {true, uneven + "the FFT takes it as if it were."};
  return {false, uneven + "Lomb-Scargle, without a window. Resample first for an FFT."};
}

std::string ResolutionText(const Spectrum& spectrum, double length) {
  return "Frequencies " + GeneralText(1 / length, 4) + " apart are told from each other, up to " +
         GeneralText(spectrum.frequency.back(), 4) + ".";
}

std::string WindowText(const Spectrum& spectrum) {
  if (spectrum.coherent_gain == 1) return {};
  return "The window's coherent gain, " + GeneralText(spectrum.coherent_gain, 4) +
         ", is divided out; its noise bandwidth is " + GeneralText(spectrum.noise_width, 4) +
         " steps.";
}

/// Names and units of the axes.
std::string FrequencyTitle(const NamedUnit& x) {
  return TitleOf({"Frequency", x.unit.empty() ? "1/" + x.name : InverseUnit(x.unit)});
}

std::string ValueTitle(const TSeries& source, const NamedUnit& x, SpectrumOf of) {
  const NamedUnit y = SplitNamedUnit(source.Source().YDataColumn);
  if (of == SpectrumOf::Amplitude) return TitleOf({"Amplitude of " + y.name, y.unit});
  const std::string squared = SquaredUnit(y.unit);
  if (of == SpectrumOf::Power) return TitleOf({"Power of " + y.name, squared});
  const bool known = !squared.empty() && !x.unit.empty();
  return TitleOf(
      {"Power density of " + y.name, known ? squared + "/" + InverseUnit(x.unit) : std::string()});
}

Computed Compute(const ToolInput& input) {
  const TSeries& source = input.Source();
  const ToolColumns columns = ColumnsInX(source);
  if (columns.x.size() < 2 || !(columns.x.back() > columns.x.front()))
    throw Error("A spectrum needs points at two X or more.");
  const ToolSettings& settings = input.settings;
  const SpectrumOptions options = {settings.Chosen<SpectrumOf>("quantity"),
                                   settings.Chosen<SpectrumWindow>("window"),
                                   settings.Chosen<Trend>("take-off"), settings.Whole("finer")};
  Chosen chosen = ChooseMethod(settings.Chosen<Method>("method"), columns.x);
  const double range = columns.x.back() - columns.x.front();
  const auto points = static_cast<double>(columns.x.size());
  const double step = range / (points - 1);
  const Spectrum spectrum = chosen.fft ? EvenSpectrum(columns.y, step, options)
                                       : LombScargle(columns.x, columns.y, options);
  AddSentence(chosen.told, WindowText(spectrum));
  AddSentence(chosen.told, ResolutionText(spectrum, step * points));
  AddSentence(chosen.told, LeftOutText(source, columns));
  const NamedUnit x = XNameOf(input);
  return {SeriesLike(source, spectrum.frequency, spectrum.y, FrequencyTitle(x),
                     ValueTitle(source, x, options.of)),
          chosen.told};
}

}  // namespace

constinit const Tool kSpectrumTool = {
    .name = "spectrum",
    .caption = "Spectrum",
    .purpose = "What a DataSet is made of by frequency: amplitude, power",
    .suffix = "_SPC",
    .settings = kSettings,
    .x = ResultX::Own,
    .compute = Compute};

}  // namespace tarnwick
