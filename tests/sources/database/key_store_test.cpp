#include "sources/database/key_store.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>
#include <memory>

#include "support/refusal.h"

namespace tarnwick {
namespace {

using testing::Refusal;

constexpr const char* kRoot = "/org/freedesktop/secrets";

/// A key store that keeps one item, as the bus sees one: made and asked in a thread of its own.
class Store final : public QDBusVirtualObject {
 public:
  bool locked = false;
  QByteArray value;  // empty: there is no item
  QMap<QString, QString> attributes;

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& asked, const QDBusConnection& bus) override {
    const auto answer = [&](const QVariantList& values) {
      return bus.send(asked.createReply(values));
    };
    const auto path = [](const char* text) { return QVariant::fromValue(QDBusObjectPath(text)); };
    const QString method = asked.member();
    if (method == "OpenSession") return answer({QVariant::fromValue(QDBusVariant("")), path("/s")});
    if (method == "ReadAlias") return answer({path("/org/freedesktop/secrets/c")});
    if (method == "SearchItems")
      return answer(Found(qdbus_cast<QMap<QString, QString>>(asked.arguments().at(0))));
    if (method == "GetSecret") return answer({QVariant::fromValue(Secret())});
    if (method == "CreateItem") {
      const bool in_place_of_the_old = asked.arguments().at(2).toBool();
      if (!locked && in_place_of_the_old) Keep(asked);
      return answer({path("/"), path(locked ? "/prompt" : "/")});
    }
    if (method != "Delete") return false;
    value.clear();
    return answer({path("/")});
  }

 private:
  QVariantList Found(const QMap<QString, QString>& wanted) const {
    QList<QDBusObjectPath> open, closed;
    if (!value.isEmpty() && wanted == attributes)
      (locked ? closed : open).append(QDBusObjectPath("/org/freedesktop/secrets/c/1"));
    return {QVariant::fromValue(open), QVariant::fromValue(closed)};
  }
  QDBusArgument Secret() const {
    QDBusArgument secret;
    secret.beginStructure();
    secret << QDBusObjectPath("/s") << QByteArray() << value << QString("text/plain");
    secret.endStructure();
    return secret;
  }
  void Keep(const QDBusMessage& asked) {
    const auto properties = qdbus_cast<QVariantMap>(asked.arguments().at(0));
    attributes =
        qdbus_cast<QMap<QString, QString>>(properties["org.freedesktop.Secret.Item.Attributes"]);
    const auto secret = asked.arguments().at(1).value<QDBusArgument>();
    QDBusObjectPath session;
    QByteArray parameters;
    secret.beginStructure();
    secret >> session >> parameters >> value;
    secret.endStructure();
  }
};

class KeyStore : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(bus_.registerVirtualObject(kRoot, &store_, QDBusConnection::SubPath));
    store_.moveToThread(&thread_);
    thread_.start();
    EXPECT_FALSE(HasKeyStore());
    ASSERT_TRUE(bus_.registerService("org.freedesktop.secrets"));
  }
  void TearDown() override {
    thread_.quit();
    thread_.wait();
    bus_ = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus("key-store");
  }

  QThread thread_;
  Store store_;
  QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "key-store");
};

TEST_F(KeyStore, KeepsPasswordsByServerUntilTheyAreForgotten) {
  EXPECT_TRUE(HasKeyStore());
  EXPECT_EQ(KeptPassword("host"), std::nullopt);
  KeepPassword("host", "s\u00e9same");
  EXPECT_EQ(KeptPassword("host"), "s\u00e9same");
  EXPECT_EQ(KeptPassword("other"), std::nullopt) << "a graph may name any server";
  ForgetKeptPassword("host");
  EXPECT_EQ(KeptPassword("host"), std::nullopt);
}

TEST_F(KeyStore, ALockedOneIsToldAndNobodyIsAsked) {
  KeepPassword("host", "secret");
  store_.locked = true;
  EXPECT_EQ(KeptPassword("host"), std::nullopt);
  EXPECT_NE(Refusal([] { KeepPassword("host", "other"); }).find("unlock it first"),
            std::string::npos);
  EXPECT_EQ(store_.value, "secret");
}

}  // namespace
}  // namespace tarnwick
