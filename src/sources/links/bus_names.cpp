#include "sources/links/bus_names.h"

#include <QByteArray>
#include <QRegularExpression>

#include "base/ascii.h"

namespace tarnwick {
namespace {

constexpr qsizetype kMostOfName = 255;  // the bus' own limit

bool StandsInPath(char c) {
  return IsLetter(c) || IsDigit(c) || c == '/' || c == '_';
}

QString Escaped(const std::string& topic) {
  QString path = "/";
  for (const char c : topic) {
    if (StandsInPath(c)) {
      path += QLatin1Char(c);
    } else {
      path += '_' + QString::fromLatin1(QByteArray(1, c).toHex());
    }
  }
  return path;
}

}  // namespace

std::optional<QString> BusNameOf(const std::string& service) {
  static const QRegularExpression kName(
      QStringLiteral("\\A[A-Za-z_-][A-Za-z0-9_-]*(\\.[A-Za-z_-][A-Za-z0-9_-]*)+\\z"));
  if (service == "*") return QString();
  QString name = QString::fromStdString(service);
  if (!name.contains('.')) name.prepend("org.tarnwick.link.");
  if (name.size() > kMostOfName || !kName.match(name).hasMatch()) return std::nullopt;
  return name;
}

std::optional<QString> ObjectPathOf(const std::string& topic) {
  static const QRegularExpression kPath(QStringLiteral("\\A(/|(/[A-Za-z0-9_]+)+)\\z"));
  if (topic.empty()) return std::nullopt;
  QString path = topic.front() == '/' ? QString::fromStdString(topic) : Escaped(topic);
  if (!kPath.match(path).hasMatch()) return std::nullopt;
  return path;
}

}  // namespace tarnwick
