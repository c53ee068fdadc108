// Files that are often taken for data files and hold no text, told by their bytes. Knows no fields.
#pragma once

#include <string>
#include <string_view>

namespace tarnwick {

/// True for a workbook whose parts are packed as a zip archive: .xlsx, .ods and their like.
bool IsZippedWorkbook(std::string_view bytes);

/// What such a file is and what to do about it, as the text of a FileError: "Workbooks of the old binary kind cannot be read;
/// save it as .xlsx". Empty for everything else. `name` tells by its ending what an archive without any sign of it was to be.
std::string WhyNoText(std::string_view bytes, std::string_view name);

}  // namespace tarnwick
