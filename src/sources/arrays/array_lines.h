// Lines through arrays: along which of its axes the rows of an array run, and at which places of the others. Knows arrays by what
// is told of them; reads no values.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sources/arrays/named_array.h"

namespace tarnwick {

/// The array that gives its values to an axis counts a time ("hours since 2000-01-01").
bool CountsTime(std::span<const NamedArray> arrays, const std::string& axis);

/// The arrays with their rows where a table has them: of two axes of which the second alone counts a time, that one becomes the
/// first. Behind them the lines that `asked` names: "HGT[0,36,:]" is one array of one axis. Throws FileError for a line that does
/// not fit its array.
std::vector<NamedArray> WithRowsAlongLines(std::span<const NamedArray> arrays,
                                           std::span<const std::string> asked,
                                           const std::string& file);

/// "0,36,:": where a column (from 0) of an array of one or two axes lies in the file's array.
std::string LineOf(const NamedArray& array, std::int64_t column);

/// "HGT[0,0,:]": a line through an array, along the axis that counts a time, else of two axes the first, of more the last.
std::string LineThrough(const NamedArray& array, std::span<const NamedArray> arrays);

/// "HGT[0,36,:]" of " HGT [0, 36, :]", and what names no line without the blanks around it.
std::string PlainLine(std::string_view asked);

/// "HGT" of "HGT[0,36,:]", and what names no line as it is.
std::string_view WithoutLine(std::string_view asked);

/// "21 × 73 × 144", "1" without axes.
std::string ShapeText(const NamedArray& array);

}  // namespace tarnwick
