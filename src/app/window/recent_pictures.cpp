#include "app/window/recent_pictures.h"

#include <QCryptographicHash>
#include <algorithm>
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

RecentPictures::RecentPictures(fs::path folder, QObject* parent)
    : QObject(parent), folder_(std::move(folder)) {}

void RecentPictures::Make(const fs::path& file, const GraphState& state) {
  if (folder_.empty()) return;
  maker_.Do([this, folder = folder_, file, state] {
    try {
      const std::string bytes = Draw(state);
      std::error_code error;  // tells itself by the writing
      fs::create_directories(folder, error);
      KeepForUser(folder);
      WriteWholeFile(PictureIn(folder, file), bytes);
      RemoveOldest(folder, kMostKept);
      const QImage picture = QImage::fromData(QByteArray::fromStdString(bytes));
      mail_.Address().Post([this, file, picture] { emit pictureFound(PathText(file), picture); });
    } catch (const Error&) {
      // Without a picture the file is shown by its name, as one that was never opened.
    }
  });
}

void RecentPictures::LookFor(const std::vector<fs::path>& files) {
  for (const fs::path& file : files) {
    if (looked_for_.insert(file).second) LookForOne(file);
  }
}

void RecentPictures::LookForOne(const fs::path& file) {
  const auto look = [this, here = mail_.Address(), picture_file = PictureIn(folder_, file), file] {
    if (const QImage picture(PathText(picture_file)); !picture.isNull())
      here.Post([this, file, picture] { emit pictureFound(PathText(file), picture); });
    std::error_code unreadable;  // means not there
    const auto found =
        fs::exists(file, unreadable) ? &RecentPictures::fileThere : &RecentPictures::fileMissing;
    here.Post([this, file, found] {
      looked_for_.erase(file);
      emit(this->*found)(PathText(file));
    });
  };
  // One thread for each: nobody waits for another's place, and nobody at all at the end.
  try {
    std::thread(look).detach();
  } catch (const std::system_error&) {
    looked_for_.erase(file);  // where no thread can be had the file is shown by its name alone
  }
}

}  // namespace tarnwick
