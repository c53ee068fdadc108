// Publishes values that Tarnwick, or any program on the session bus, plots as live links. Needs Qt 6 Core and DBus, and a
// running event loop in the thread that makes it. Free to copy into any program.
//
//   tarnwick_links::LinkPublisher lab("reactor", "lab");
//   lab.Publish("temperature", 296.4);   // the link reactor|lab!temperature
#pragma once

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QString>

namespace tarnwick_links {

class LinkPublisher final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.tarnwick.Link")

 public:
  /// Takes the name of `service` on the bus: a word ("reactor" becomes org.tarnwick.link.reactor), or a whole name with
  /// dots. `topic` is a word of letters, digits and "_" ("lab" becomes the object /lab), or a path that begins with "/".
  LinkPublisher(const QString& service, const QString& topic, QObject* parent = nullptr);
  ~LinkPublisher() override;

  /// Whether the name was taken; Why() else says what is against it.
  bool IsPublishing() const { return why_.isEmpty(); }
  QString Why() const { return why_; }

  /// The item has this value from now on: whoever asks gets it, and hot links are told at once. The number is written with
  /// as few digits as bring it back exactly, and ".".
  void Publish(const QString& item, double value);
  /// The same with a text: a number with its unit, a date.
  void Publish(const QString& item, const QString& text);

 public slots:
  /// What the bus asks: the present text of an item, empty where there is none.
  Q_SCRIPTABLE QString Request(const QString& item) const { return texts_.value(item); }

 signals:
  Q_SCRIPTABLE void Changed(const QString& item, const QString& text);

 private:
  QDBusConnection bus_;
  QString name_;
  QString path_;
  QString why_;
  QHash<QString, QString> texts_;
};

}  // namespace tarnwick_links
