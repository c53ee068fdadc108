#include "cli/commands/tool_command.h"

#include <memory>
#include <optional>

#include "cli/options/made_series.h"
#include "graph/xy_graph.h"
#include "results/made_series.h"

namespace tarnwick::cli {
namespace {

/// What was given for one setting.
struct Given {
  std::optional<std::string> text;  // choices too, by their words
  std::optional<int> whole;
  std::optional<double> number;
  bool flag = false;
};

struct ToolArguments {
  const Tool& tool;
  MadeSeriesArguments made = {};
  std::string dataset = {};
  std::vector<Given> settings = {};
  std::vector<std::optional<std::string>> others = {};
};

std::vector<std::string> WordsOf(const FieldControl& control) {
  std::vector<std::string> words;
  for (const FieldChoice& choice : control.choices) words.push_back(ChoiceWord(choice.caption));
  return words;
}

void AddSetting(Command& command, const ToolSetting& setting, Given& given) {
  const std::string name = "--" + std::string(setting.key);
  std::string help(setting.help);
  switch (setting.control.kind) {
    case ControlKind::CheckBox:
      command.AddFlag(name, given.flag, help);
      return;
    case ControlKind::Integer:
      command.Add(name, given.whole, help)
          .Between(static_cast<int>(setting.control.min), static_cast<int>(setting.control.max));
      return;
    case ControlKind::Number:
      command.Add(name, given.number, help);
      return;
    case ControlKind::Choice:
      for (const std::string& word : WordsOf(setting.control))
        help += (word == WordsOf(setting.control).front() ? ": " : ", ") + word;
      command.Add(name, given.text, help).OneOf(WordsOf(setting.control));
      return;
    default:
      command.Add(name, given.text, help);
  }
}

ToolSettings SettingsOf(const ToolArguments& arguments) {
  ToolSettings settings(arguments.tool.settings);
  for (std::size_t i = 0; i < arguments.settings.size(); ++i) {
    const Given& given = arguments.settings[i];
    if (given.text) settings.SetText(i, *given.text);
    if (given.whole) settings.Set(i, std::int32_t{*given.whole});
    if (given.number) settings.Set(i, *given.number);
    if (given.flag) settings.Set(i, true);
  }
  return settings;
}

void RunTool(const ToolArguments& arguments, Output& output) {
  const Tool& tool = arguments.tool;
  RunMadeSeries(arguments.made, output, [&](TxyGraph& graph) -> const TSeries& {
    TSeries& source = graph.Series(ChooseToldSeries(graph, arguments.dataset, output));
    ToolInput input{{&source}, SettingsOf(arguments)};
    for (const std::optional<std::string>& other : arguments.others) {
      if (!other) break;
      input.series.push_back(&graph.Series(ChooseSeries(graph, *other)));
    }
    const MadeSeries made = AddMade(graph, tool, std::move(input),
                                    arguments.made.Wanted(MadeName(graph, source, tool)));
    const bool hides = tool.x == ResultX::Own && !arguments.made.show_source;
    if (hides) HideSource(graph, source, made.series, tool.x);
    NameInLegend(graph);
    output.Note(made.told);
    if (hides) TellHidden(arguments.made, source, output);
    output.Note(LiveSourceText(source));
    return made.series;
  });
}

}  // namespace

void DeclareToolCommand(const Tool& tool, Command& command, Action& action) {
  auto arguments = std::make_shared<ToolArguments>(ToolArguments{tool});
  arguments->made.axis = tool.axis == AxisId::Y ? "main" : "second";
  AddMadeSeries(command, arguments->made);
  AddDataset(command, arguments->dataset);
  arguments->others.resize(tool.others.size());
  for (std::size_t i = 0; i < tool.others.size(); ++i) {
    const OtherInput& other = tool.others[i];
    Option option = command.Add("--" + std::string(other.key), arguments->others[i],
                                std::string(other.help) + ", by name or number");
    if (other.need == OtherInput::Need::Wanted) option.Required();
  }
  arguments->settings.resize(tool.settings.size());
  for (std::size_t i = 0; i < tool.settings.size(); ++i)
    AddSetting(command, tool.settings[i], arguments->settings[i]);
  if (tool.x == ResultX::Own) AddShowSource(command, arguments->made, "though its X is another");
  OnCommand(command, action, arguments, &RunTool);
}

}  // namespace tarnwick::cli
