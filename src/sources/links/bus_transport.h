// Live links over the session bus: the service is a name on the bus, the topic the path of an object, the item what is asked
// of it. Knows the bus and its interface for links; knows no numbers.
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <memory>

#include "sources/links/bus_connection.h"
#include "sources/links/link_transport.h"

namespace tarnwick {

class BusTransport final : public QObject, public LinkTransport {
  Q_OBJECT

 public:
  explicit BusTransport(std::shared_ptr<BusConnection> connection,
                        std::chrono::milliseconds patience = kLinkPatience);
  ~BusTransport() override;

  bool SetLink(const std::string& service, const std::string& topic) override;
  bool Open() override;
  void Close() override;
  std::string RequestData(const std::string& item) override;
  void Bind(const std::string& item, Changed changed) override;
  std::string Trouble() const override { return trouble_; }

 private slots:
  void HearChange(const QString& item, const QString& text);

 private:
  /// The next text of the item, from a program that nobody could ask by a name.
  std::string HearNext(const std::string& item);
  std::string NoneInTime() const;

  std::shared_ptr<BusConnection> connection_;
  std::chrono::milliseconds patience_;
  QString name_;
  QString path_;
  QString item_;
  Changed changed_;  ///< empty: nothing is bound
  std::string trouble_;
};

}  // namespace tarnwick
