// Keeps a copy of every document that ending would lose, so that a program that is ended loses seconds of work. Takes the
// state on the window's thread, which shares its points, and writes it on one of its own. Knows documents; asks nothing.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "desk/recovery/left_graphs.h"
#include "desk/recovery/recovery_store.h"
#include "desk/work/mailbox.h"
#include "desk/work/worker.h"

namespace tarnwick {

class Document;
struct EditState;

class RecoveryKeeper final : public QObject {
  Q_OBJECT

 public:
  /// Half of the ten seconds that may be lost: the other half is for writing.
  static constexpr std::chrono::milliseconds kInterval{5000};

  /// Copies go into a folder within `root`. A change is copied at most `interval` after it, or as soon as the copy before is
  /// written.
  explicit RecoveryKeeper(std::filesystem::path root,
                          std::chrono::milliseconds interval = kInterval,
                          QObject* parent = nullptr);
  /// Waits for what is being written. Copies of documents that are still open stay.
  ~RecoveryKeeper() override = default;

  /// From now on until the document's end, when its copy goes.
  void Follow(Document& document);
  /// What the followed document was opened from is its copy from now on.
  void TakeOver(const Document& document, const LeftGraph& left);

 signals:
  /// A copy could not be written; the one before stays. Told once, until one could be written again.
  void failed(const QString& why);

 private:
  struct Kept {
    Document* document = nullptr;
    std::shared_ptr<const EditState> copied;  // or being written
    bool changed = true;                      // maybe, since it was copied
    bool writing = false;
    bool late = false;   // its turn came while it was being written
    bool filed = false;  // there may be a copy of it
  };

  void FollowChange(int number);
  void CopyChanged();
  void Copy(int number, Kept& kept);
  /// Has the worker write the copy `number`.
  void Work(int number, const std::function<void()>& writing);
  void Written(int number, const std::string& trouble);
  void Remove(int number);
  void StartWaiting();

  RecoveryStore store_;  // the worker's, while that works
  QTimer timer_;
  std::map<int, Kept> kept_;  // by the numbers of the copies
  int last_number_ = 0;
  bool failing_ = false;
  Mailbox written_;
  Worker worker_;  // one thread: a copy is removed after it was written
};

}  // namespace tarnwick
