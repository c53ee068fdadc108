// Labels of plotting programs whose signs raise, lower or otherwise set letters. Knows texts only.
#pragma once

#include <string>
#include <string_view>

namespace tarnwick {

/// A label with backslash codes ("V\srest\N (kJ mol\S-1\N)", "\xD\f{}t") as plain text (UTF-8): raised and lowered digits and
/// signs as such ("mol⁻¹"), other lowered letters behind "_" and raised ones behind "^", letters of the symbol font in Greek;
/// fonts, sizes and strokes dropped. A backslash before anything else stands for itself.
std::string WithoutPlotMarkup(std::string_view label);

}  // namespace tarnwick
