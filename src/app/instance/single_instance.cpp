#include "app/instance/single_instance.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>

#include "app/instance/hand_over.h"

namespace tarnwick {
namespace {

constexpr int kAnswerWait = 2000;  // ms that an instance may take to answer before it is asked anew
constexpr int kConnectWait = 500;  // ms
constexpr int kPause = 20;         // ms between two looks for an instance
constexpr auto kStreamVersion = QDataStream::Qt_6_0;
constexpr qsizetype kLongestName = 16;
constexpr qint64 kMostBytes = 1 << 24;  // of a message: no command line is longer

void Send(QLocalSocket& socket, InstanceMessage message, const QByteArray& content) {
  QDataStream stream(&socket);
  stream.setVersion(kStreamVersion);
  stream << static_cast<quint32>(message) << content;
  socket.flush();
}

std::optional<quint32> WaitForAnswer(QLocalSocket& socket) {
  QDeadlineTimer deadline(kAnswerWait);
  while (socket.bytesAvailable() < static_cast<qint64>(sizeof(quint32))) {
    if (!socket.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) return std::nullopt;
  }
  QDataStream stream(&socket);
  stream.setVersion(kStreamVersion);
  quint32 answer = 0;
  stream >> answer;
  return answer;
}

}  // namespace

InstanceNames NamesOfInstance() {
  QByteArray desktop = qgetenv("WAYLAND_DISPLAY");
  if (desktop.isEmpty()) desktop = qgetenv("DISPLAY");
  const QByteArray digest =
      QCryptographicHash::hash(desktop, QCryptographicHash::Sha256).toHex().left(kLongestName);
  const QDir folder(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
  const QString name = QStringLiteral("tarnwick-%1").arg(QString::fromLatin1(digest));
  return {folder.filePath(name + ".socket"), folder.filePath(name + ".lock")};
}

SingleInstance::SingleInstance(InstanceNames names) : names_(std::move(names)), lock_(names_.lock) {
  lock_.setStaleLockTime(0);  // held as long as its process lives, however long that is
}

SingleInstance::~SingleInstance() {
  server_.reset();  // nobody is to find a socket without a lock
}

SingleInstance::Start SingleInstance::Begin(const std::vector<std::string>& words,
                                            const QByteArray& token,
                                            std::chrono::milliseconds patience) {
  QDeadlineTimer deadline(patience);
  for (;;) {
    if (HandOver(words, token)) return Start::HandedOver;
    if (lock_.tryLock(0)) return Start::First;
    // A folder that takes no lock must not keep the program from starting.
    if (lock_.error() != QLockFile::LockFailedError) return Start::First;
    if (deadline.hasExpired()) return Start::Blocked;
    QThread::msleep(kPause);
  }
}

bool SingleInstance::HandOver(const std::vector<std::string>& words, const QByteArray& token) {
  QLocalSocket socket;
  socket.connectToServer(names_.socket);
  if (!socket.waitForConnected(kConnectWait)) return false;
  Send(socket, InstanceMessage::Identify, {});
  if (WaitForAnswer(socket) != kInstanceAnswer) return false;
  Send(socket, InstanceMessage::Activate, token);
  if (!words.empty()) {
    Send(socket, InstanceMessage::CommandLine, EncodeWords(WordsToHandOver(words)));
    // Without the answer they may be lost with an instance that is just closing.
    if (!WaitForAnswer(socket)) return false;
  }
  socket.disconnectFromServer();
  if (socket.state() != QLocalSocket::UnconnectedState) socket.waitForDisconnected(kConnectWait);
  return true;
}

void SingleInstance::Listen() {
  QLocalServer::removeServer(names_.socket);  // what an instance that was killed left
  server_ = std::make_unique<QLocalServer>();
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  connect(server_.get(), &QLocalServer::newConnection, this, [this] {
    while (QLocalSocket* const socket = server_->nextPendingConnection()) Greet(*socket);
  });
  server_->listen(names_.socket);  // without it a second start finds the lock and tells
}

void SingleInstance::Greet(QLocalSocket& socket) {
  connect(&socket, &QLocalSocket::disconnected, &socket, &QObject::deleteLater);
  connect(&socket, &QLocalSocket::readyRead, this, [this, &socket] {
    // Once the other has gone, nobody waits for what it asked.
    while (socket.isOpen() && AnswerMessage(socket)) {
    }
  });
}

bool SingleInstance::AnswerMessage(QLocalSocket& socket) {
  if (socket.bytesAvailable() > kMostBytes) {
    socket.abort();
    return false;
  }
  QDataStream stream(&socket);
  stream.setVersion(kStreamVersion);
  stream.startTransaction();
  quint32 number = 0;
  QByteArray content;
  stream >> number >> content;
  if (!stream.commitTransaction()) return false;
  const auto answer = [&](quint32 what) {
    stream << what;
    socket.flush();
  };
  switch (static_cast<InstanceMessage>(number)) {
    case InstanceMessage::Identify:
      answer(kInstanceAnswer);
      return true;
    case InstanceMessage::Activate:
      emit activated(content);
      return true;
    case InstanceMessage::CommandLine:
      answer(kInstanceAnswer);
      if (std::optional<std::vector<std::string>> words = DecodeWords(content)) {
        // Opening may ask; the other start need not wait for that.
        QMetaObject::invokeMethod(
            this, [this, words = *std::move(words)] { emit wordsTaken(words); },
            Qt::QueuedConnection);
      }
      return true;
  }
  socket.abort();  // no instance of this program
  return false;
}

}  // namespace tarnwick
