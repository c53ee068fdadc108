// Shows the help, whose viewer is a library loaded when somebody first asks. Knows topics by their ids.
#pragma once

#include <QStringList>

class QWidget;

namespace tarnwick {

struct CommandContext;

/// Opens the page that has the first of these topics that any page has, else the first page. Throws Error when viewer or pages
/// are missing or belong to another version.
void ShowHelpOn(CommandContext& context, const QStringList& topics);
/// Opens the index, likewise.
void ShowHelpIndex(CommandContext& context);

/// What the help may call `widget`: its name and those of what it stands in, or the chosen entry of a menu.
QStringList TopicsOf(const QWidget* widget);

}  // namespace tarnwick
