#include "desk/commands/command.h"

#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/document.h"

namespace tarnwick {

std::string_view ShortHint(std::string_view hint) {
  return hint.substr(0, hint.find('|'));
}

std::string_view LongHint(std::string_view hint) {
  const std::size_t bar = hint.find('|');
  return bar == std::string_view::npos ? hint : hint.substr(bar + 1);
}

bool HasDocument(const CommandContext& context) {
  return context.document != nullptr;
}

bool HasDataSet(const CommandContext& context) {
  return context.document && context.document->Graph().CurrentSeries();
}

bool IsEnabled(const Command& command, const CommandContext& context) {
  if (!command.run && !command.mode) return false;
  return !command.enabled || command.enabled(context);
}

bool IsCheckable(const Command& command) {
  return command.checked || command.mode;
}

bool IsChecked(const Command& command, const CommandContext& context) {
  if (command.mode) return context.modes && context.modes->IsOn(command.mode);
  return command.checked && command.checked(context);
}

void RunCommand(const Command& command, CommandContext& context) {
  if (!IsEnabled(command, context)) return;
  const auto work = [&command](CommandContext& present) {
    if (command.run) command.run(present);
    if (command.mode && present.modes) present.modes->SwitchMode(command.mode);
  };
  RunAsCommand(work, context);
}

void RunAsCommand(const std::function<void(CommandContext&)>& work, CommandContext& context) {
  try {
    work(context);
  } catch (const Error& error) {
    context.prompt.Tell(error.what());
  }
}

}  // namespace tarnwick
