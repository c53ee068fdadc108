#include "results/peak_table_text.h"

#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr PeakColumn kColumns[] = {
    {"x", &PeakFigures::x},
    {"height", &PeakFigures::height},
    {"prominence", &PeakFigures::prominence},
    {"width", &PeakFigures::width},
    {"area", &PeakFigures::area},
    {"asymmetry", &PeakFigures::asymmetry},
    {"left_valley", &PeakFigures::left_valley},
    {"right_valley", &PeakFigures::right_valley},
};

constexpr FittedValue FittedPeak::*kFitted[] = {&FittedPeak::x, &FittedPeak::height,
                                                &FittedPeak::width, &FittedPeak::area};

}  // namespace

std::span<const PeakColumn> PeakColumns() {
  return kColumns;
}

std::string PeakTableText(std::span<const PeakFigures> peaks, char separator) {
  std::string text;
  for (const PeakColumn& column : kColumns)
    text += (text.empty() ? "" : std::string(1, separator)) + column.name;
  for (const PeakFigures& peak : peaks) {
    text += '\n';
    for (const PeakColumn& column : kColumns)
      text += (&column == kColumns ? "" : std::string(1, separator)) +
              ShortestText(peak.*column.figure);
  }
  return text + '\n';
}

std::string FittedTableText(std::span<const FittedPeak> peaks, char separator) {
  std::string text;
  for (const char* name :
       {"x", "x_error", "height", "height_error", "width", "width_error", "area", "area_error"})
    text += (text.empty() ? "" : std::string(1, separator)) + name;
  for (const FittedPeak& peak : peaks) {
    std::string line;
    for (const auto figure : kFitted) {
      const FittedValue& value = peak.*figure;
      line += (line.empty() ? "" : std::string(1, separator)) + ShortestText(value.value) +
              separator + ShortestText(value.error);
    }
    text += '\n' + line;
  }
  return text + '\n';
}

}  // namespace tarnwick
