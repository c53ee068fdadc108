// How the names of a link become names of the session bus. Knows both ways of writing; connects to nothing. What publishes
// maps its names in the same way (docs/live-links.md).
#pragma once

#include <QString>
#include <optional>
#include <string>

namespace tarnwick {

/// What publishes values answers and tells under this interface (docs/link-interface.xml).
inline constexpr char kLinkInterface[] = "org.tarnwick.Link";

/// The name on the bus of a link's service: a name with a dot as it stands, a plain word behind "org.tarnwick.link.".
/// Of "*", which stands for whoever sends, an empty one. Nothing when the bus knows no such names.
std::optional<QString> BusNameOf(const std::string& service);

/// The object's path of a link's topic: one that begins with "/" as it stands, else "/" and the topic, in which "_" and hex
/// digits stand for each byte that no path holds: "Book 1" is "/Book_201". Nothing when that is no path.
std::optional<QString> ObjectPathOf(const std::string& topic);

}  // namespace tarnwick
