#include "sources/links/bus_connection.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <atomic>

namespace tarnwick {
namespace {

QString NewName() {
  static std::atomic<int> number = 0;
  return QStringLiteral("tarnwick-links-%1").arg(++number);
}

}  // namespace

BusConnection::BusConnection()
    : name_(NewName()), bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)) {}

BusConnection::~BusConnection() {
  bus_ = QDBusConnection(QString());
  QDBusConnection::disconnectFromBus(name_);
}

bool BusConnection::HasOwner(const QString& name) {
  return IsThere() && bus_.interface()->isServiceRegistered(name).value();
}

}  // namespace tarnwick
