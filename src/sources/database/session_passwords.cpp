#include "sources/database/session_passwords.h"

#include <map>
#include <mutex>

namespace tarnwick {
namespace {

struct Remembered {
  std::mutex mutex;
  std::map<std::string, QString> passwords;
};

Remembered& Session() {
  static Remembered remembered;
  return remembered;
}

}  // namespace

PasswordWanted::PasswordWanted(const std::string& text, const std::string& server,
                               const std::string& place)
    : Error(text), server_(server), place_(place) {}

QString PasswordFor(const std::string& server) {
  {
    const std::lock_guard lock(Session().mutex);
    const auto found = Session().passwords.find(server);
    if (found != Session().passwords.end()) return found->second;
  }
  // A graph from elsewhere may name any server: the password is for one.
  if (server.empty() || qEnvironmentVariable("TARNWICK_DB_SERVER").toStdString() != server) {
    return {};
  }
  return qEnvironmentVariable("TARNWICK_DB_PASSWORD");
}

void RememberPassword(const std::string& server, const QString& password) {
  const std::lock_guard lock(Session().mutex);
  if (password.isEmpty()) {
    Session().passwords.erase(server);
  } else {
    Session().passwords[server] = password;
  }
}

}  // namespace tarnwick
