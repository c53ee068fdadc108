// The desktop's key store (the Secret Service of the session bus), for passwords that the user asked to keep. Knows servers by
// name; knows no data base. It never has the user asked: what is locked is as what is not there.
#pragma once

#include <QString>
#include <optional>
#include <string>

namespace tarnwick {

/// True where there is one. Asks the bus; false in programs without an event loop.
bool HasKeyStore();

/// The password that was kept for `server`; nothing where there is none, or the key store is locked or does not answer.
std::optional<QString> KeptPassword(const std::string& server);

/// Puts it into the key store, in place of another one for that server. Throws Error when that cannot be done.
void KeepPassword(const std::string& server, const QString& password);

/// Takes it out again; nothing where there is none. Throws Error.
void ForgetKeptPassword(const std::string& server);

}  // namespace tarnwick
