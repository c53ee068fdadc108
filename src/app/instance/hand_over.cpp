#include "app/instance/hand_over.h"

#include <QDataStream>
#include <QIODevice>
#include <QList>
#include <filesystem>
#include <system_error>

#include "app/window/command_line.h"

namespace tarnwick {
namespace {

constexpr auto kStreamVersion = QDataStream::Qt_6_0;
constexpr const char* kDropOptions = "-no ";

std::string Absolute(const std::string& word) {
  std::error_code error;
  if (word.empty() || word.front() == '-' || !std::filesystem::exists(word, error)) return word;
  const std::filesystem::path whole = std::filesystem::absolute(word, error);
  return error ? word : whole.string();
}

}  // namespace

std::vector<std::string> WordsToHandOver(const std::vector<std::string>& words) {
  std::vector<std::string> handed;
  handed.reserve(words.size());
  for (const std::string& word : words) handed.push_back(Absolute(word));
  return handed;
}

QByteArray EncodeWords(const std::vector<std::string>& words) {
  QList<QByteArray> list = {kDropOptions};
  for (const std::string& word : words) list.append(QByteArray::fromStdString(word));
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setVersion(kStreamVersion);
  stream << QByteArray::fromStdString(kDropOptions + JoinWords(words)) << list;
  return bytes;
}

std::optional<std::vector<std::string>> DecodeWords(const QByteArray& bytes) {
  QDataStream stream(bytes);
  stream.setVersion(kStreamVersion);
  QByteArray joined;
  stream >> joined;
  if (stream.status() != QDataStream::Ok) return std::nullopt;
  if (stream.atEnd()) return SplitWords(joined.toStdString());
  QList<QByteArray> list;
  stream >> list;
  if (stream.status() != QDataStream::Ok) return std::nullopt;
  std::vector<std::string> words;
  for (const QByteArray& word : list) words.push_back(word.toStdString());
  return words;
}

}  // namespace tarnwick
