// That one instance of the program runs for each user and desktop: finds the one that does and hands it the words of a second
// start, or becomes it. Knows sockets and locks; no window.
#pragma once

#include <QLockFile>
#include <QObject>
#include <QString>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

class QLocalServer;
class QLocalSocket;

namespace tarnwick {

/// The files by which instances of one user on one desktop find each other.
struct InstanceNames {
  QString socket;
  QString lock;
};
/// By the desktop that the environment names (WAYLAND_DISPLAY, else DISPLAY), in the user's own runtime folder.
InstanceNames NamesOfInstance();

class SingleInstance final : public QObject {
  Q_OBJECT

 public:
  explicit SingleInstance(InstanceNames names);
  ~SingleInstance() override;

  enum class Start {
    First,       ///< no other runs; this one holds the lock from now on
    HandedOver,  ///< another runs, is in front and has the words
    Blocked,     ///< another holds the lock and answers nothing
  };
  /// Waits up to `patience` for another that is still beginning. `token` lets the other take the focus.
  Start Begin(const std::vector<std::string>& words, const QByteArray& token,
              std::chrono::milliseconds patience);
  /// Answers second starts from now on. Only after Begin gave First.
  void Listen();

 signals:
  void activated(const QByteArray& token);
  /// Comes from the event loop, never while another call is answered.
  void wordsTaken(const std::vector<std::string>& words);

 private:
  bool HandOver(const std::vector<std::string>& words, const QByteArray& token);
  void Greet(QLocalSocket& socket);
  /// Answers one whole message that has come; false when none has.
  bool AnswerMessage(QLocalSocket& socket);

  InstanceNames names_;
  QLockFile lock_;
  std::unique_ptr<QLocalServer> server_;
};

}  // namespace tarnwick
