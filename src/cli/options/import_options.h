// The options that say how a text file is read, shared by every command that reads a FILE.
#pragma once

#include <string>
#include <vector>

#include "data/import/import_file.h"

namespace tarnwick::cli {

class Command;

/// The options as typed.
struct ImportArguments {
  std::string database;  ///< instead of a file
  std::string table;
  std::string query;
  std::string links;  ///< instead of a file
  std::string sheet;
  std::string range;
  std::vector<std::string> arrays;
  std::string x_column;
  std::vector<std::string> y_columns;
  std::optional<int> headers;
  std::optional<std::string> separators;
  std::optional<std::string> markers;
  std::optional<int> width;
  std::optional<std::string> cuts;
  std::string rows;
  std::string every;
  std::string x_format;
  std::string y_format;
  std::vector<std::string> y_errors;
  std::optional<std::string> x_errors;
  std::optional<std::string> x_expression;
  std::optional<std::string> y_expression;
  double tolerance = 0;
  bool duplicates = false;
  bool overwrite_equal = false;
  std::optional<int> names_line;
  std::optional<bool> stacked_names;
  bool whole_table = false;
  std::optional<int> units_line;
  std::optional<std::string> comment_marks;
  std::optional<std::string> missing;
  std::optional<bool> merge_separators;
};

void AddImportOptions(Command& command, ImportArguments& arguments);

/// The engine's options. Throws UsageError when a text means nothing.
ImportOptions ToImportOptions(const ImportArguments& arguments);

}  // namespace tarnwick::cli
