#include "desk/commands/command.h"

#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/document.h"

namespace tarnwick {

std::string_view ShortHint(const Command& command) {
  return command.hint.substr(0, command.hint.find('|'));
}

std::string_view LongHint(const Command& command) {
  const std::size_t bar = command.hint.find('|');
  return bar == std::string_view::npos ? command.hint : command.hint.substr(bar + 1);
}

bool HasDocument(const CommandContext& context) {
  return context.document != nullptr;
}

bool HasDataSet(const CommandContext& context) {
  return context.document && context.document->Graph().CurrentSeries();
}

bool IsCheckable(const Command& command) {
  return command.checked || command.mode;
}

bool IsChecked(const Command& command, const CommandContext& context) {
  if (command.mode) return context.modes && context.modes->IsOn(command.mode);
  return command.checked && command.checked(context);
}

void RunCommand(const Command& command, CommandContext& context) {
  if (command.enabled && !command.enabled(context)) return;
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
