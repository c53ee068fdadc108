#include "link_publisher.h"

#include <QLocale>

namespace tarnwick_links {

LinkPublisher::LinkPublisher(const QString& service, const QString& topic, QObject* parent)
    : QObject(parent),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "link-publisher-" + service)),
      name_(service.contains('.') ? service : "org.tarnwick.link." + service),
      path_(topic.startsWith('/') ? topic : '/' + topic) {
  if (!bus_.registerObject(path_, this, QDBusConnection::ExportScriptableContents)) {
    why_ = "there is no session bus, or " + path_ + " is no path";
  } else if (!bus_.registerService(name_)) {
    why_ = "the name " + name_ + " is taken, or no name";
  }
}

LinkPublisher::~LinkPublisher() {
  bus_.unregisterService(name_);
  const QString connection = bus_.name();
  bus_ = QDBusConnection(QString());
  QDBusConnection::disconnectFromBus(connection);
}

void LinkPublisher::Publish(const QString& item, double value) {
  Publish(item, QLocale::c().toString(value, 'g', QLocale::FloatingPointShortest));
}

void LinkPublisher::Publish(const QString& item, const QString& text) {
  texts_.insert(item, text);
  emit Changed(item, text);
}

}  // namespace tarnwick_links
