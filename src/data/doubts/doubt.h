// What is not certain about a table that was read, found by looking at what came of it instead of at the reasons of the guess.
// A plain value.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "data/columns/column_roles.h"
#include "data/columns/import_source.h"

namespace tarnwick {

class TDataSeries;
struct ImportOptions;

/// What would be wrong if the doubt is right, the worst first.
enum class DoubtAbout : std::uint8_t {
  X,       ///< another column is X, or X is read as something else
  Rows,    ///< rows are lost, belong elsewhere or lack a field
  Values,  ///< a column or some of its values are no measurements
};

struct Doubt {
  DoubtAbout about = DoubtAbout::Values;
  std::string text;  ///< one clause, with what has it otherwise in parentheses at its end
};

using Doubts = std::vector<Doubt>;

/// A table whose columns have got their parts.
struct ReadColumns {
  const ImportSource& source;
  const ImportOptions& options;
  const ChosenColumns& chosen;
  std::span<const TDataSeries* const> series;  ///< one for each Y
};

/// Puts their clauses among the notes: those that are not about values ahead of all, the weightiest first, the others last.
void AddDoubts(Doubts doubts, std::vector<std::string>& notes);

}  // namespace tarnwick
