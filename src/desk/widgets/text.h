// Between the engine's UTF-8 texts and paths and Qt's strings.
#pragma once

#include <QString>
#include <filesystem>
#include <string_view>

namespace tarnwick {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline QString PathText(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}

inline std::filesystem::path ToPath(const QString& text) {
  return std::filesystem::path(text.toStdString());
}

}  // namespace tarnwick
