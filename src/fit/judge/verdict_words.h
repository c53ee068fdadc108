// Turns of phrase that the verdict's sentence and its notes share.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fit/fit_result.h"

namespace tarnwick {

/// Six digits of it.
std::string FigureText(double value);
/// Two.
std::string RoughText(double value);

/// The first of `count` points: "X = 0", "X = 0 and at 2 other points"
std::string PlacesText(double first_x, std::int64_t count);

/// The varied parameters of these indices: "a, b and c".
std::string NamesOf(const FitResult& result, const std::vector<std::int32_t>& which);

/// "X = 57, 12 standard deviations"
std::string Described(const FarthestPoint& point);

}  // namespace tarnwick
