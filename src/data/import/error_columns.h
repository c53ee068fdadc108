// Which columns of a table give the errors of which others. Knows names and places of columns; reads no values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/import/column_roles.h"

namespace tarnwick {

/// Takes the columns of errors as those of the columns that they are named after, stand behind, or follow in the same order;
/// what the user says goes before. `candidates`: columns that NamesErrors, of which those that are taken go. Throws Error for
/// options that do not fit the columns and FileError for columns that are not there.
void ChooseErrors(const ImportSource& source, const ImportOptions& options, ChosenColumns& chosen,
                  std::vector<std::int32_t>& candidates);

}  // namespace tarnwick
