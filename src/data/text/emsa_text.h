// Spectra in the file format of EMSA and MAS whose X is told by its beginning and its step, turned into lines of X and Y. Knows
// the keywords of the format (ISO 22029, "EMSA/MAS standard file format for spectral-data exchange"); knows no columns.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

/// The text with the values between "#SPECTRUM" and the next keyword, of DATATYPE Y, replaced by one line for each, "X<tab>Y";
/// the i-th from 0 lies at OFFSET + i XPERCHAN. All else stays. Nothing when the text is in no such format, or tells no X. Throws
/// FileError, of the file `name`, where a value cannot be read.
std::optional<std::string> LinesOfEmsa(std::string_view text, const std::string& name);

}  // namespace tarnwick
