// What the fields of a line above a table read like: names of columns, their units, or neither. Knows texts; knows no layout and
// no rows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// "-----  ----" or "=+=": a rule between head and rows, no names.
bool IsRule(std::string_view line);

/// What stands above the rows beside a line.
enum class Preamble { None, Some };

/// True when the fields of this line may name columns: most are texts, some may be numbers, years for instance. Sentences
/// and rules do not; where a preamble may hold sentences, phrases are taken for names only where nothing else is cut so.
bool AreNames(const std::vector<std::string>& names, std::string_view line,
              Preamble preamble = Preamble::Some);

/// "Operator: Smith", "Values;201", "Date;14.3.2024;12:05": what is told of a measurement, in as many fields as the rows have.
bool AreSetting(const std::vector<std::string>& names);

/// "r g b", "T_in n(r) x": none is a word of a sentence.
bool AreSymbols(const std::vector<std::string>& names);

/// "double", "real", "null": how values are kept, below the names of some catalogues.
bool AreTypes(const std::vector<std::string>& names);

/// A line below the names whose fields are mostly units. Single letters may be names as well: all must be units then.
bool AreUnits(const std::vector<std::string>& names);

}  // namespace tarnwick
