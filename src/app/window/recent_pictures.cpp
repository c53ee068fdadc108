#include "app/window/recent_pictures.h"

#include <QCryptographicHash>
#include <algorithm>
#include <mutex>
#include <set>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include "base/error.h"
#include "base/whole_file.h"
#include "desk/recovery/graph_note.h"
#include "desk/widgets/text.h"
#include "graph/pictures/picture_export.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

namespace fs = std::filesystem;

constexpr int kDpi = 48;  // half of a screen's: texts and lines keep their share of the picture
constexpr const char* kEnding = ".png";

/// By its file's name, whatever letters that is of.
fs::path PictureIn(const fs::path& folder, const fs::path& file) {
  const QByteArray digest = QCryptographicHash::hash(QByteArray::fromStdString(file.string()),
                                                     QCryptographicHash::Sha256);
  return folder / (digest.toHex().left(32).toStdString() + kEnding);
}

std::string Draw(const GraphState& state) {
  TxyGraph graph;
  graph.SetState(state);
  PictureOptions options;
  options.width = RecentPictures::kSize.width();
  options.height = RecentPictures::kSize.height();
  options.dpi = kDpi;
  return PngBytes(graph, options);
}

void RemoveOldest(const fs::path& folder, std::size_t most_kept) {
  std::vector<std::pair<fs::file_time_type, fs::path>> pictures;
  std::error_code ignored;  // what cannot be looked at stays
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    if (entry.path().extension() == kEnding)
      pictures.emplace_back(entry.last_write_time(ignored), entry.path());
  }
  if (pictures.size() <= most_kept) return;
  std::ranges::sort(pictures);
  pictures.resize(pictures.size() - most_kept);
  for (const auto& [time, picture] : pictures) fs::remove(picture, ignored);
}

}  // namespace

/// What the threads that look share with their owner, and outlive it with.
struct RecentPictures::Looking {
  std::mutex mutex;  // guards both
  RecentPictures* owner = nullptr;
  std::set<fs::path> files;  // that no answer has come for

  /// Has the owner do it, if there still is one.
  template <class Work>
  void Tell(Work work) {
    const std::lock_guard lock(mutex);
    if (owner == nullptr) return;
    QMetaObject::invokeMethod(
        owner, [owner = owner, work] { work(*owner); }, Qt::QueuedConnection);
  }
  bool Begin(const fs::path& file) {
    const std::lock_guard lock(mutex);
    return files.insert(file).second;
  }
  void End(const fs::path& file) {
    const std::lock_guard lock(mutex);
    files.erase(file);
  }
};

RecentPictures::RecentPictures(fs::path folder, QObject* parent)
    : QObject(parent), folder_(std::move(folder)), looking_(std::make_shared<Looking>()) {
  looking_->owner = this;
  maker_.setMaxThreadCount(1);
}

RecentPictures::~RecentPictures() {
  {
    const std::lock_guard lock(looking_->mutex);
    looking_->owner = nullptr;
  }
  maker_.waitForDone();
}

void RecentPictures::Make(const fs::path& file, const GraphState& state) {
  if (folder_.empty()) return;
  maker_.start([looking = looking_, folder = folder_, file, state] {
    try {
      const std::string bytes = Draw(state);
      std::error_code error;  // tells itself by the writing
      fs::create_directories(folder, error);
      KeepForUser(folder);
      WriteWholeFile(PictureIn(folder, file), bytes);
      RemoveOldest(folder, kMostKept);
      const QImage picture = QImage::fromData(QByteArray::fromStdString(bytes));
      looking->Tell([file, picture](RecentPictures& owner) {
        emit owner.pictureFound(PathText(file), picture);
      });
    } catch (const Error&) {
      // Without a picture the file is shown by its name, as one that was never opened.
    }
  });
}

void RecentPictures::LookFor(const std::vector<fs::path>& files) {
  for (const fs::path& file : files) {
    if (looking_->Begin(file)) LookForOne(file);
  }
}

void RecentPictures::LookForOne(const fs::path& file) {
  const auto look = [looking = looking_, picture_file = PictureIn(folder_, file), file] {
    if (const QImage picture(PathText(picture_file)); !picture.isNull()) {
      looking->Tell([file, picture](RecentPictures& owner) {
        emit owner.pictureFound(PathText(file), picture);
      });
    }
    std::error_code unreadable;  // means not there
    const auto found =
        fs::exists(file, unreadable) ? &RecentPictures::fileThere : &RecentPictures::fileMissing;
    looking->Tell([file, found](RecentPictures& owner) { emit(owner.*found)(PathText(file)); });
    looking->End(file);
  };
  // One thread for each: nobody waits for another's place, and nobody at all at the end.
  try {
    std::thread(look).detach();
  } catch (const std::system_error&) {
    looking_->End(file);  // where no thread can be had the file is shown by its name alone
  }
}

}  // namespace tarnwick
