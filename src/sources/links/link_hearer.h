// What hears hot links in the thread of their stream: opens them, follows the programs that come and go on the bus, and makes
// a row whenever the link of Y has a new value. Knows the bus and links; knows no thread.
#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "sources/links/bus_connection.h"
#include "sources/links/dde_setup.h"
#include "sources/links/link_rows.h"
#include "sources/streams/row_queue.h"

namespace tarnwick {

class LinkHearer final : public QObject {
 public:
  /// Lives in the thread that makes it, and hears while that has a loop of events. Throws Error for a description that cannot
  /// be used, and where there is no bus.
  LinkHearer(const TDSInfo& info, RowQueue& queue,
             std::function<void(const std::string& why)> ended);

  void Begin();

 private:
  /// A link, and the name of its program on the bus.
  struct Heard {
    std::int32_t column;
    QString service;
    std::unique_ptr<TDdeSetup> setup;
  };

  void Add(std::int32_t column);
  void Open(Heard& heard);
  void Take(std::int32_t column, const std::string& text);
  void HandOver();
  void FollowService(const QString& name, const QString& owner);
  void Tell();

  RowQueue& queue_;
  std::function<void(const std::string& why)> ended_;
  LinkRows rows_of_;
  StreamRows rows_;
  bool break_next_ = true;  // what was there before was of another hearing
  std::shared_ptr<BusConnection> connection_;
  std::vector<Heard> heard_;
  QDBusServiceWatcher watcher_;
  std::set<QString> missing_;  // names that no program has
  std::string unread_;         // the last text that was no number
  QTimer handing_over_;
  QTimer telling_;
};

}  // namespace tarnwick
