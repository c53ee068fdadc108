#include "sources/links/link_hearer.h"

#include <chrono>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "sources/links/bus_names.h"
#include "sources/links/bus_transport.h"
#include "sources/links/link_text.h"

namespace tarnwick {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kMostOfUnread = 60;  // of a text that is told
// Ending a stream waits for the question that is being asked.
constexpr auto kPatience = 500ms;
constexpr auto kBetweenHandOvers = 5ms;

}  // namespace

LinkHearer::LinkHearer(const TDSInfo& info, RowQueue& queue,
                       std::function<void(const std::string& why)> ended)
    : queue_(queue),
      ended_(std::move(ended)),
      rows_of_(info),
      connection_(std::make_shared<BusConnection>()) {
  if (!connection_->IsThere()) throw Error("There is no session bus");
  for (const std::int32_t column : rows_of_.Heard()) Add(column);
  watcher_.setConnection(connection_->Bus());
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString& name, const QString&, const QString& owner) {
            FollowService(name, owner);
          });
  handing_over_.setSingleShot(true);
  connect(&handing_over_, &QTimer::timeout, this, &LinkHearer::HandOver);
  connect(&telling_, &QTimer::timeout, this, &LinkHearer::Tell);
}

void LinkHearer::Add(std::int32_t column) {
  const LinkParts parts = SplitLink(rows_of_.LinkOf(column));
  const std::optional<QString> service = BusNameOf(parts.service);
  if (!service || !ObjectPathOf(parts.topic)) throw Error(UnsettableLink(rows_of_.LinkOf(column)));
  Heard heard{column, *service,
              std::make_unique<TDdeSetup>(std::make_unique<BusTransport>(connection_, kPatience),
                                          LinkReads::Texts, LinkUpdates::Hot)};
  heard.setup->SetOnData([this, column](const TDdeSetup& told) { Take(column, told.Text()); });
  if (!heard.service.isEmpty()) watcher_.addWatchedService(heard.service);
  heard_.push_back(std::move(heard));
}

void LinkHearer::Begin() {
  // The others must have a value when that of Y, which is the first, comes.
  for (std::size_t i = heard_.size(); i > 0; --i) Open(heard_[i - 1]);
  Tell();
  telling_.start(1s);
}

void LinkHearer::Open(Heard& heard) {
  heard.setup->SetLink(rows_of_.LinkOf(heard.column));
  if (!heard.setup->Error().empty()) {
    missing_.insert(heard.service);
  } else if (heard.column != heard_.front().column) {
    heard.setup->Request();
  }
}

void LinkHearer::Take(std::int32_t column, const std::string& text) {
  rows_of_.Put(column, text);
  if (column != heard_.front().column) return;
  if (const auto unread = rows_of_.AddRow(rows_)) unread_ = unread->substr(0, kMostOfUnread);
  if (!handing_over_.isActive()) handing_over_.start(kBetweenHandOvers);
}

void LinkHearer::HandOver() {
  StreamRows rows = std::exchange(rows_, {});
  if (queue_.Paused()) {
    break_next_ = true;
    return;
  }
  if (!rows.x.empty() && std::exchange(break_next_, false)) rows.breaks = {0};
  queue_.Add(rows);
}

void LinkHearer::FollowService(const QString& name, const QString& owner) {
  HandOver();
  if (owner.isEmpty()) {
    missing_.insert(name);
  } else {
    missing_.erase(name);
    break_next_ = true;
    for (std::size_t i = heard_.size(); i > 0; --i) {
      if (heard_[i - 1].service == name) Open(heard_[i - 1]);
    }
  }
  Tell();
}

void LinkHearer::Tell() {
  if (!connection_->IsThere()) return ended_("The session bus has ended");
  if (!missing_.empty()) {
    queue_.Say(StreamState::Away, "Waiting for the program " + missing_.begin()->toStdString() +
                                      ", which is not on the session bus");
    return;
  }
  const std::string& y = rows_of_.LinkOf(heard_.front().column);
  queue_.Say(StreamState::Running,
             "Hears " + y + (unread_.empty() ? "" : "; " + UnreadableValue(unread_)));
}

}  // namespace tarnwick
