#include "sources/database/key_store.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QList>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include "base/error.h"
#include "sources/links/bus_connection.h"

namespace tarnwick {

/// A secret as the bus carries it.
struct KeyStoreSecret {
  QDBusObjectPath session;
  QByteArray parameters;
  QByteArray value;
  QString type;
};

// Found by the bus through the type's namespace.
static QDBusArgument& operator<<(QDBusArgument& to, const KeyStoreSecret& secret) {
  to.beginStructure();
  to << secret.session << secret.parameters << secret.value << secret.type;
  to.endStructure();
  return to;
}

static const QDBusArgument& operator>>(const QDBusArgument& from, KeyStoreSecret& secret) {
  from.beginStructure();
  from >> secret.session >> secret.parameters >> secret.value >> secret.type;
  from.endStructure();
  return from;
}

namespace {

constexpr int kPatienceMs = 3000;
constexpr const char* kService = "org.freedesktop.secrets";
constexpr const char* kRoot = "/org/freedesktop/secrets";
constexpr const char* kOfService = "org.freedesktop.Secret.Service";
constexpr const char* kOfItem = "org.freedesktop.Secret.Item";
constexpr const char* kOfCollection = "org.freedesktop.Secret.Collection";

using Attributes = QMap<QString, QString>;

Attributes AttributesOf(const std::string& server) {
  return {{"application", "tarnwick"}, {"server", QString::fromStdString(server)}};
}

/// One conversation with the key store. Everything throws Error.
class Talk {
 public:
  Talk() {
    qDBusRegisterMetaType<Attributes>();
    qDBusRegisterMetaType<KeyStoreSecret>();
    if (!bus_.IsThere()) throw Error("There is no session bus, and so no key store");
  }

  QDBusMessage Call(const QString& path, const char* interface, const char* method,
                    const QVariantList& arguments) {
    QDBusMessage asked = QDBusMessage::createMethodCall(kService, path, interface, method);
    asked.setArguments(arguments);
    const QDBusMessage answer = bus_.Bus().call(asked, QDBus::Block, kPatienceMs);
    if (answer.type() != QDBusMessage::ReplyMessage) {
      throw Error("The key store does not answer: " + answer.errorMessage().toStdString());
    }
    return answer;
  }

  /// Not encrypted: the bus belongs to the user.
  QDBusObjectPath Session() {
    const QVariant none = QVariant::fromValue(QDBusVariant(QString()));
    const QDBusMessage answer = Call(kRoot, kOfService, "OpenSession", {"plain", none});
    return answer.arguments().value(1).value<QDBusObjectPath>();
  }

  /// Of the server, those that are not locked.
  QList<QDBusObjectPath> Items(const std::string& server) {
    const QDBusMessage answer =
        Call(kRoot, kOfService, "SearchItems", {QVariant::fromValue(AttributesOf(server))});
    return qdbus_cast<QList<QDBusObjectPath>>(answer.arguments().value(0));
  }

 private:
  BusConnection bus_;
};

/// An operation that the key store wants the user to agree to names who would ask him.
void RequireDone(const QDBusMessage& answer, int place) {
  if (answer.arguments().value(place).value<QDBusObjectPath>().path() == "/") return;
  throw Error("The key store is locked: unlock it first, with the program that manages it");
}

}  // namespace

bool HasKeyStore() {
  if (QCoreApplication::instance() == nullptr) return false;
  BusConnection bus;
  if (bus.HasOwner(kService)) return true;
  const auto can_be_begun = [&bus] {
    const QDBusReply<QStringList> names = bus.Bus().interface()->activatableServiceNames();
    return names.isValid() && names.value().contains(QLatin1String(kService));
  };
  return bus.IsThere() && can_be_begun();
}

std::optional<QString> KeptPassword(const std::string& server) {
  if (server.empty() || !HasKeyStore()) return std::nullopt;
  try {
    Talk talk;
    const QList<QDBusObjectPath> items = talk.Items(server);
    if (items.isEmpty()) return std::nullopt;
    const QVariant session = QVariant::fromValue(talk.Session());
    const QDBusMessage answer = talk.Call(items.front().path(), kOfItem, "GetSecret", {session});
    return QString::fromUtf8(qdbus_cast<KeyStoreSecret>(answer.arguments().value(0)).value);
  } catch (const Error&) {
    return std::nullopt;  // as where there is none: whoever needs the password asks for it
  }
}

void KeepPassword(const std::string& server, const QString& password) {
  Talk talk;
  const QDBusMessage alias = talk.Call(kRoot, kOfService, "ReadAlias", {"default"});
  const QString collection = alias.arguments().value(0).value<QDBusObjectPath>().path();
  if (collection == "/") throw Error("The key store has no place for passwords yet");
  const QVariantMap properties = {
      {"org.freedesktop.Secret.Item.Label",
       "Tarnwick: data base " + QString::fromStdString(server)},
      {"org.freedesktop.Secret.Item.Attributes", QVariant::fromValue(AttributesOf(server))}};
  const KeyStoreSecret secret{talk.Session(), {}, password.toUtf8(), "text/plain; charset=utf8"};
  RequireDone(talk.Call(collection, kOfCollection, "CreateItem",
                        {properties, QVariant::fromValue(secret), true}),
              1);
}

void ForgetKeptPassword(const std::string& server) {
  Talk talk;
  for (const QDBusObjectPath& item : talk.Items(server)) {
    RequireDone(talk.Call(item.path(), kOfItem, "Delete", {}), 0);
  }
}

}  // namespace tarnwick
