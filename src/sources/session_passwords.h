// Passwords that the user gave for servers, kept in memory as long as the program runs and nowhere else. Like the environment
// they belong to the process: sources are opened deep below whoever asked.
#pragma once

#include <QString>
#include <string>

namespace tarnwick {

/// That of `server`: what was remembered, else what the environment holds for it; empty where there is none.
QString PasswordFor(const std::string& server);

/// Keeps it until the program ends; an empty one is forgotten.
void RememberPassword(const std::string& server, const QString& password);

}  // namespace tarnwick
