// Which columns of a table give the errors of which others. Knows names and places of columns; reads no values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/columns/column_roles.h"
#include "data/columns/error_pairs.h"

namespace tarnwick {

struct ImportOptions;

/// Takes the columns of errors as those of the columns that they are named after, stand behind, or follow in the same order;
/// what the user says goes before. One column that the user names for several DataSets is that of the one it is
/// written after, of the one before it, or without a word about DataSets of the first, which is told. `candidates`: columns that
/// NamesErrors, of which those that are taken go. Throws Error for options that do not fit the columns and FileError for columns
/// that are not there.
void ChooseErrors(const ImportSource& source, const ErrorPairs& pairs, const ImportOptions& options,
                  ChosenColumns& chosen, std::vector<std::int32_t>& candidates);

}  // namespace tarnwick
