// Files that are often taken for data files and hold no text, told by their bytes. Knows no fields.
#pragma once

#include <string>
#include <string_view>

namespace tarnwick {

/// What such a file is and what to do about it, as the text of a FileError: "Spreadsheets cannot be read yet; save the
/// sheet as CSV". Empty for everything else.
std::string WhyNoText(std::string_view bytes);

}  // namespace tarnwick
