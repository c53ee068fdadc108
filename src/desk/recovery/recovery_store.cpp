#include "desk/recovery/recovery_store.h"

#include <unistd.h>

#include <system_error>

#include "base/error.h"
#include "desk/document/document_io.h"
#include "desk/recovery/left_graphs.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr const char* kText = "Cannot keep a copy";
constexpr int kMostAttempts = 1000;  // for a name that no folder has

void FailOn(const std::error_code& error, const std::filesystem::path& file) {
  if (error) throw FileError(kText, file.string(), error.message());
}

}  // namespace

RecoveryStore::~RecoveryStore() {
  lock_.reset();
  std::error_code copies_left;
  if (!folder_.empty()) std::filesystem::remove(folder_, copies_left);
}

void RecoveryStore::MakeFolder() {
  if (!folder_.empty()) return;
  std::error_code error;
  std::filesystem::create_directories(root_, error);
  FailOn(error, root_);
  KeepForUser(root_);
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    const auto folder = root_ / (std::to_string(::getpid()) + '-' + std::to_string(attempt));
    const bool made = std::filesystem::create_directory(folder, error);
    FailOn(error, folder);
    if (!made) continue;  // another program of this number left it
    KeepForUser(folder);
    auto lock = std::make_unique<QLockFile>(PathText(LockIn(folder)));
    lock->setStaleLockTime(0);  // held as long as its process lives
    if (!lock->tryLock(0)) continue;
    lock_ = std::move(lock);
    folder_ = folder;
    return;
  }
  throw FileError(kText, root_.string(), "no folder can be locked");
}

void RecoveryStore::Write(int number, const GraphCopy& copy) {
  MakeFolder();
  WriteNote(NoteIn(folder_, number), copy.note);
  const auto file = CopyIn(folder_, number);
  WriteByKind(copy.state, file);
  KeepForUser(file);
  std::error_code ignored;  // then it is younger by the time that writing took
  std::filesystem::last_write_time(file, copy.taken, ignored);
}

void RecoveryStore::TakeOver(int number, const LeftGraph& left) {
  MakeFolder();
  WriteNote(NoteIn(folder_, number), left.note);
  std::error_code error;
  std::filesystem::rename(left.copy, CopyIn(folder_, number), error);
  FailOn(error, left.copy);
  RemoveLeft(left);
}

void RecoveryStore::Remove(int number) {
  if (folder_.empty()) return;
  std::error_code not_there;
  std::filesystem::remove(CopyIn(folder_, number), not_there);
  std::filesystem::remove(NoteIn(folder_, number), not_there);
}

}  // namespace tarnwick
