#include "results/tools/recipe.h"

#include <algorithm>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::string_view kPlain =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-._";

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += c;
    quoted += c;
  }
  return quoted + '"';
}

std::string SettingText(const std::string& text) {
  const bool plain = !text.empty() && text.find_first_not_of(kPlain) == std::string::npos;
  return plain ? text : Quoted(text);
}

/// Takes a recipe's text apart from its front.
class RecipeReader {
 public:
  explicit RecipeReader(std::string_view text) : whole_(text), rest_(text) {}

  Recipe Read() {
    Recipe recipe;
    recipe.tool = Word();
    Expect('(');
    do recipe.inputs.push_back(Quotation());
    while (Take(','));
    while (Take(';')) {
      std::string key = Word();
      Expect('=');
      const bool quoted = !rest_.empty() && rest_.front() == '"';
      recipe.settings.emplace_back(std::move(key), quoted ? Quotation() : Word());
    }
    Expect(')');
    if (!rest_.empty()) Refuse();
    return recipe;
  }

 private:
  [[noreturn]] void Refuse() const {
    throw Error("\"" + std::string(whole_) + "\" does not tell how points are computed.");
  }
  bool Take(char wanted) {
    if (rest_.empty() || rest_.front() != wanted) return false;
    rest_.remove_prefix(1);
    while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
    return true;
  }
  void Expect(char wanted) {
    if (!Take(wanted)) Refuse();
  }
  std::string Word() {
    const std::size_t length = std::min(rest_.find_first_not_of(kPlain), rest_.size());
    if (length == 0) Refuse();
    std::string word(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return word;
  }
  std::string Quotation() {
    std::string text;
    if (rest_.empty() || rest_.front() != '"') Refuse();
    while (true) {
      rest_.remove_prefix(1);
      const std::size_t end = rest_.find('"');
      if (end == std::string_view::npos) Refuse();
      text += rest_.substr(0, end);
      rest_.remove_prefix(end + 1);
      if (rest_.empty() || rest_.front() != '"') return text;
      text += '"';  // it stood twice
    }
  }

  std::string_view whole_;
  std::string_view rest_;
};

}  // namespace

std::string RecipeText(const Recipe& recipe) {
  std::string text = recipe.tool + '(';
  for (const std::string& input : recipe.inputs)
    text += (&input == recipe.inputs.data() ? "" : ", ") + Quoted(input);
  for (const auto& [key, value] : recipe.settings) text += "; " + key + '=' + SettingText(value);
  return text + ')';
}

Recipe ReadRecipe(std::string_view text) {
  return RecipeReader(text).Read();
}

Recipe RecipeOf(const Tool& tool, const ToolInput& input) {
  Recipe recipe{std::string(tool.name), {}, {}};
  for (const TSeries* series : input.series) recipe.inputs.push_back(series->SeriesName());
  for (std::size_t i = 0; i < tool.settings.size(); ++i) {
    const ToolSetting& row = tool.settings[i];
    if (row.matters && !row.matters(input.settings)) continue;
    recipe.settings.emplace_back(row.key, input.settings.TextAt(i));
  }
  return recipe;
}

ToolSettings SettingsOf(const Tool& tool, const Recipe& recipe) {
  ToolSettings settings(tool.settings);
  for (const auto& [key, text] : recipe.settings) {
    const auto row = std::ranges::find(tool.settings, key, &ToolSetting::key);
    if (row == tool.settings.end())
      throw Error("\"" + recipe.tool + "\" has no setting \"" + key + "\".");
    settings.SetText(static_cast<std::size_t>(row - tool.settings.begin()), text);
  }
  return settings;
}

}  // namespace tarnwick
