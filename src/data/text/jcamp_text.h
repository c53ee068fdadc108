// Spectra in JCAMP-DX, turned into lines of X and Y. Knows the labels and the packed forms of its tables (McDonald and Wilks,
// "JCAMP-DX: A Standard Form for Exchange of Infrared Spectra in Computer Readable Form", Applied Spectroscopy 42, 1988);
// knows no columns.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

/// The text with the lines of its tables (X++(Y..Y)) and (XY..XY) replaced by one line for each point, "X<tab>Y", multiplied by
/// their factors; all else stays. Nothing when the text is no JCAMP-DX or holds no such table. Throws FileError, of the file
/// `name`, where a table cannot be read.
std::optional<std::string> LinesOfJcamp(std::string_view text, const std::string& name);

}  // namespace tarnwick
