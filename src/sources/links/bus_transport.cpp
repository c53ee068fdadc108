#include "sources/links/bus_transport.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEventLoop>
#include <QTimer>
#include <optional>
#include <utility>

#include "base/number_text.h"
#include "sources/links/bus_names.h"

namespace tarnwick {
namespace {

constexpr char kSignal[] = "Changed";
constexpr char kSignature[] = "ss";

std::string TextOf(const QString& text) {
  return text.left(qsizetype{kMostOfLinkText}).toStdString();
}

}  // namespace

BusTransport::BusTransport(std::shared_ptr<BusConnection> connection,
                           std::chrono::milliseconds patience)
    : connection_(std::move(connection)), patience_(patience) {}

BusTransport::~BusTransport() {
  Close();
}

bool BusTransport::SetLink(const std::string& service, const std::string& topic) {
  const std::optional<QString> name = BusNameOf(service);
  const std::optional<QString> path = ObjectPathOf(topic);
  trouble_.clear();
  if (!name) trouble_ = "\"" + service + "\" is no name on the session bus";
  if (!path) trouble_ = "\"" + topic + "\" is no path of an object";
  name_ = name.value_or(QString());
  path_ = path.value_or(QString());
  return trouble_.empty();
}

bool BusTransport::Open() {
  trouble_.clear();
  if (!connection_->IsThere()) {
    trouble_ = "there is no session bus";
  } else if (!name_.isEmpty() && !connection_->HasOwner(name_)) {
    trouble_ = "no program has the name " + name_.toStdString() + " on the session bus";
  }
  return trouble_.empty();
}

void BusTransport::Close() {
  if (!changed_) return;
  connection_->Bus().disconnect(name_, path_, kLinkInterface, kSignal, {item_}, kSignature, this,
                                SLOT(HearChange(QString, QString)));
  changed_ = nullptr;
}

std::string BusTransport::NoneInTime() const {
  return "none came within " + ShortestText(static_cast<double>(patience_.count()) / 1000) + " s";
}

std::string BusTransport::HearNext(const std::string& item) {
  BusTransport ear(connection_, patience_);
  ear.path_ = path_;
  std::string heard;
  QEventLoop waiting;
  ear.Bind(item, [&](const std::string& text) {
    if (text.empty()) return;  // no value
    heard = text;
    waiting.quit();
  });
  QTimer::singleShot(patience_, &waiting, &QEventLoop::quit);
  waiting.exec(QEventLoop::ExcludeUserInputEvents);
  trouble_ = heard.empty() ? NoneInTime() : std::string();
  return heard;
}

std::string BusTransport::RequestData(const std::string& item) {
  if (name_.isEmpty()) return HearNext(item);
  QDBusMessage question =
      QDBusMessage::createMethodCall(name_, path_, kLinkInterface, QStringLiteral("Request"));
  question << QString::fromStdString(item);
  question.setAutoStartService(false);
  QDBusPendingCallWatcher answer(
      connection_->Bus().asyncCall(question, static_cast<int>(patience_.count())));
  QEventLoop waiting;
  connect(&answer, &QDBusPendingCallWatcher::finished, &waiting, &QEventLoop::quit);
  // Input could close the window, or change the graph, that waits for this very answer.
  if (!answer.isFinished()) waiting.exec(QEventLoop::ExcludeUserInputEvents);
  trouble_.clear();
  if (!answer.isFinished()) {
    trouble_ = "it was not waited for";  // the thread is ending
    return {};
  }
  const QDBusPendingReply<QString> reply = answer;
  if (!reply.isError()) return TextOf(reply.value());
  const QDBusError error = reply.error();
  if (error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout) {
    trouble_ = NoneInTime();
  } else {
    trouble_ = TextOf(error.message().simplified());
  }
  return {};
}

void BusTransport::Bind(const std::string& item, Changed changed) {
  item_ = QString::fromStdString(item);
  changed_ = std::move(changed);
  connection_->Bus().connect(name_, path_, kLinkInterface, kSignal, {item_}, kSignature, this,
                             SLOT(HearChange(QString, QString)));
}

void BusTransport::HearChange(const QString& item, const QString& text) {
  if (changed_ && item == item_) changed_(TextOf(text));
}

}  // namespace tarnwick
