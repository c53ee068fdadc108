// Which columns of a table give the errors of which others. Knows names and places of columns; reads no values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/import/column_roles.h"

namespace tarnwick {

/// True for the names that columns of errors have: "err", "sigma", "dy", "+-", …
bool NamesErrors(std::string_view name);

/// What a column of errors is to be called so that the guess takes it as that of the column `name` right before it.
std::string ErrorsHeading(std::string_view name);

/// Takes the columns of errors as those of the columns that they are named after, stand behind, or follow in the same order;
/// what the user says goes before. `candidates`: columns that NamesErrors, of which those that are taken go. Throws Error for
/// options that do not fit the columns and FileError for columns that are not there.
void ChooseErrors(const ImportSource& source, const ImportOptions& options, ChosenColumns& chosen,
                  std::vector<std::int32_t>& candidates);

}  // namespace tarnwick
