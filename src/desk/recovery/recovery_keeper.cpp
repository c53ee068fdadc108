#include "desk/recovery/recovery_keeper.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/error.h"
#include "desk/document/document.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

GraphNote NoteOf(const Document& document) {
  const auto whole = [](const std::filesystem::path& file) {
    std::error_code ignored;  // without a folder to work in there is no whole path
    return file.empty() ? file : std::filesystem::absolute(file, ignored);
  };
  const DocumentFiles& files = document.Files();
  return {document.Name(), whole(files.GraphFileName()), whole(files.DataFileName())};
}

}  // namespace

RecoveryKeeper::RecoveryKeeper(std::filesystem::path root, std::chrono::milliseconds interval,
                               QObject* parent)
    : QObject(parent), store_(std::move(root)) {
  timer_.setSingleShot(true);
  timer_.setInterval(interval);
  connect(&timer_, &QTimer::timeout, this, &RecoveryKeeper::CopyChanged);
}

void RecoveryKeeper::Follow(Document& document) {
  const int number = ++last_number_;
  kept_[number].document = &document;
  connect(&document, &Document::stateChanged, this, [this, number] { FollowChange(number); });
  connect(&document, &QObject::destroyed, this, [this, number] {
    kept_.erase(number);
    Remove(number);
  });
  FollowChange(number);
}

void RecoveryKeeper::StartWaiting() {
  if (!timer_.isActive()) timer_.start();
}

void RecoveryKeeper::FollowChange(int number) {
  Kept& kept = kept_.at(number);
  kept.changed = kept.document->Files().EndingLoses();
  if (kept.changed) return StartWaiting();
  kept.late = false;
  kept.copied.reset();
  if (std::exchange(kept.filed, false)) Remove(number);
}

void RecoveryKeeper::CopyChanged() {
  for (auto& [number, kept] : kept_) {
    if (!kept.changed) continue;
    kept.late = kept.writing;
    if (!kept.writing) Copy(number, kept);
  }
}

void RecoveryKeeper::Copy(int number, Kept& kept) {
  kept.changed = false;
  kept.late = false;
  auto present = kept.document->History().Present();
  if (present == kept.copied) return;
  kept.copied = present;
  const auto taken = std::filesystem::file_time_type::clock::now();
  Work(number, [this, number, note = NoteOf(*kept.document), present, taken] {
    store_.Write(number, {note, present->graph, taken});
  });
}

void RecoveryKeeper::Work(int number, const std::function<void()>& writing) {
  Kept& kept = kept_.at(number);
  kept.writing = true;
  kept.filed = true;
  worker_.Do([this, number, writing] {
    std::string trouble;
    try {
      writing();
    } catch (const Error& error) {
      trouble = error.what();
    }
    written_.Address().Post([this, number, trouble] { Written(number, trouble); });
  });
}

void RecoveryKeeper::Written(int number, const std::string& trouble) {
  const bool told = std::exchange(failing_, !trouble.empty());
  if (failing_ && !told) emit failed(ToQt(trouble));
  const auto found = kept_.find(number);
  if (found == kept_.end()) return;
  Kept& kept = found->second;
  kept.writing = false;
  if (failing_ && kept.document->Files().EndingLoses()) {
    kept.copied.reset();
    kept.changed = true;
    StartWaiting();
  } else if (kept.late) {
    Copy(number, kept);
  }
}

void RecoveryKeeper::Remove(int number) {
  worker_.Do([this, number] { store_.Remove(number); });
}

void RecoveryKeeper::TakeOver(const Document& document, const LeftGraph& left) {
  const auto found = std::ranges::find_if(
      kept_, [&](const auto& entry) { return entry.second.document == &document; });
  const int number = found->first;
  Work(number, [this, number, left] { store_.TakeOver(number, left); });
}

}  // namespace tarnwick
