#include "desk/recovery/graph_note.h"

#include <QByteArray>
#include <QDataStream>
#include <QFile>
#include <QIODevice>
#include <charconv>
#include <system_error>

#include "base/whole_file.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr auto kStreamVersion = QDataStream::Qt_6_0;
constexpr quint32 kNoteBegin = 0x74676e31;
constexpr qint64 kLongestNote = 1 << 16;
constexpr const char* kCopyEnding = ".tgr";

}  // namespace

std::filesystem::path CopyIn(const std::filesystem::path& folder, int number) {
  return folder / (std::to_string(number) + kCopyEnding);
}

std::filesystem::path NoteIn(const std::filesystem::path& folder, int number) {
  return folder / (std::to_string(number) + ".note");
}

std::filesystem::path LockIn(const std::filesystem::path& folder) {
  return folder / "lock";
}

std::optional<int> NumberOfCopy(const std::filesystem::path& file) {
  const std::string stem = file.stem().string();
  int number = 0;
  const auto [end, error] = std::from_chars(stem.data(), stem.data() + stem.size(), number);
  if (error != std::errc() || number < 1 || CopyIn({}, number) != file.filename())
    return std::nullopt;
  return number;
}

void WriteNote(const std::filesystem::path& file, const GraphNote& note) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setVersion(kStreamVersion);
  // Names of files are bytes, not texts.
  stream << kNoteBegin << QByteArray::fromStdString(note.name)
         << QByteArray::fromStdString(note.graph_file.string())
         << QByteArray::fromStdString(note.data_file.string());
  WriteWholeFile(file, bytes.toStdString());
  KeepForUser(file);
}

std::optional<GraphNote> ReadNote(const std::filesystem::path& path) {
  QFile file(PathText(path));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.read(kLongestNote);
  QDataStream stream(bytes);
  stream.setVersion(kStreamVersion);
  quint32 begin = 0;
  QByteArray name;
  QByteArray graph_file;
  QByteArray data_file;
  stream >> begin >> name >> graph_file >> data_file;
  if (stream.status() != QDataStream::Ok || begin != kNoteBegin) return std::nullopt;
  return GraphNote{name.toStdString(), graph_file.toStdString(), data_file.toStdString()};
}

void KeepForUser(const std::filesystem::path& file_or_folder) {
  using std::filesystem::perms;
  std::error_code ignored;
  const bool folder = std::filesystem::is_directory(file_or_folder, ignored);
  std::filesystem::permissions(
      file_or_folder, folder ? perms::owner_all : perms::owner_read | perms::owner_write, ignored);
}

}  // namespace tarnwick
