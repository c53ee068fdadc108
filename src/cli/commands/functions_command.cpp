#include <iomanip>
#include <memory>
#include <span>
#include <vector>

#include "cli/commands/commands.h"
#include "expr/words/added_words.h"
#include "expr/words/builtin_words.h"

namespace tarnwick::cli {
namespace {

struct FunctionsOptions {};

std::vector<BuiltinWord> AllWords() {
  std::vector<BuiltinWord> words;
  for (const std::span<const BuiltinWord> table : {BuiltinWords(), AddedWords()})
    words.insert(words.end(), table.begin(), table.end());
  return words;
}

Json AsJson(const BuiltinWord& word) {
  return {{"name", word.name},
          {"kind", word.Kind()},
          {"priority", word.priority},
          {"arguments", word.n_args},
          {"help", word.help}};
}

void RunFunctions(const FunctionsOptions& /*options*/, Output& output) {
  if (output.IsJson()) {
    Json functions = Json::Array();
    for (const BuiltinWord& word : AllWords()) functions.Append(AsJson(word));
    output.Document({{"functions", functions}});
    return;
  }
  const auto row = [&output](const auto& name, const auto& kind, const auto& priority,
                             const auto& arguments, const auto& help) {
    output.Text() << std::left << std::setw(10) << name << std::setw(10) << kind << std::right
                  << std::setw(8) << priority << std::setw(11) << arguments << "  " << help << '\n';
  };
  row("name", "kind", "priority", "arguments", "help");
  for (const BuiltinWord& word : AllWords())
    row(word.name, word.Kind(), word.priority, word.n_args, word.help);
}

}  // namespace

void DeclareFunctions(Command& command, Action& action) {
  OnCommand(command, action, std::make_shared<FunctionsOptions>(), &RunFunctions);
}

}  // namespace tarnwick::cli
