// How a DataSet was computed, as the text that is stored with it: smooth("Rate"; method=savitzky-golay; window=11). Knows texts
// and tools; no graph.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "results/tools/tool.h"

namespace tarnwick {

struct Recipe {
  std::string tool;
  std::vector<std::string> inputs;  ///< names of DataSets
  std::vector<std::pair<std::string, std::string>> settings;

  bool operator==(const Recipe&) const = default;
};

/// Names, and settings of other characters than letters, digits and "+-._", stand in quotes; a quote in them twice.
std::string RecipeText(const Recipe& recipe);
/// Throws Error, a sentence, for a text that is no recipe.
Recipe ReadRecipe(std::string_view text);

/// The settings that matter are told.
Recipe RecipeOf(const Tool& tool, const ToolInput& input);
/// The tool's settings as a recipe has them. Throws Error, a sentence, for what the tool does not know.
ToolSettings SettingsOf(const Tool& tool, const Recipe& recipe);

}  // namespace tarnwick
