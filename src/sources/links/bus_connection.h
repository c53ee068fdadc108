// A connection to the session bus of its own, so that what a link brings meets nothing else that the program hears there.
// Knows the bus; knows no link.
#pragma once

#include <QDBusConnection>

namespace tarnwick {

class BusConnection {
 public:
  /// Connects, where there is a bus.
  BusConnection();
  ~BusConnection();
  BusConnection(const BusConnection&) = delete;
  BusConnection& operator=(const BusConnection&) = delete;

  QDBusConnection& Bus() { return bus_; }
  /// False: there is no session bus, or it has ended.
  bool IsThere() const { return bus_.isConnected(); }
  /// Whether a program has the name now. Asks the bus, which answers at once.
  bool HasOwner(const QString& name);

 private:
  QString name_;
  QDBusConnection bus_;
};

}  // namespace tarnwick
