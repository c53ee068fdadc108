// Passwords that the user gave for servers, kept in memory as long as the program runs and nowhere else. Like the environment
// they belong to the process: sources are opened deep below whoever asked.
#pragma once

#include <QString>
#include <string>

#include "base/error.h"

namespace tarnwick {

/// A data base that wants a password, or another one than it was given.
class PasswordWanted final : public Error {
 public:
  /// The server as PasswordFor knows it; the place as messages name it.
  PasswordWanted(const std::string& text, const std::string& server, const std::string& place);
  const std::string& Server() const { return server_; }
  const std::string& Place() const { return place_; }

 private:
  std::string server_;
  std::string place_;
};

/// That of `server`: what was remembered, else what the environment holds for it; empty where there is none.
QString PasswordFor(const std::string& server);

/// Keeps it until the program ends; an empty one is forgotten.
void RememberPassword(const std::string& server, const QString& password);

}  // namespace tarnwick
