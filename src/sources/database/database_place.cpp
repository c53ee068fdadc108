#include "sources/database/database_place.h"

#include <QUrl>
#include <QUrlQuery>
#include <algorithm>
#include <array>
#include <system_error>

#include "base/error.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/import/source_file.h"
#include "data/import/source_place.h"

namespace tarnwick {
namespace {

constexpr std::string_view kFile = "sqlite";
constexpr std::array<std::string_view, 4> kSchemes = {kFile, "postgresql", "mysql", "odbc"};
constexpr std::string_view kTable = "table=";
constexpr std::string_view kQuery = "query=";

/// Never repeats the address: it would show the password.
void RefusePassword(const DatabasePlace& place) {
  if (place.scheme == kFile) return;
  // Drivers pass over blanks around a key.
  std::string lower = LowerAscii(place.address);
  std::erase_if(lower, [](char c) { return c == ' ' || c == '\t'; });
  constexpr std::array<std::string_view, 2> kKeys = {"pwd=", "password="};
  const bool keyed = std::ranges::any_of(
      kKeys, [&](std::string_view key) { return lower.find(key) != lower.npos; });
  const QUrl url(QString::fromStdString(place.scheme + ':' + place.address));
  if (!keyed && url.password().isEmpty()) return;
  throw Error("The address of the " + place.scheme +
              " data base holds a password, which graph files would keep; leave it out and put it "
              "into the environment variable TARNWICK_DB_PASSWORD, its server into "
              "TARNWICK_DB_SERVER");
}

/// In small letters; empty for what begins with none of them.
std::string SchemeOf(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == text.npos) return {};
  const std::string scheme = LowerAscii(text.substr(0, colon));
  return std::ranges::find(kSchemes, scheme) == kSchemes.end() ? std::string() : scheme;
}

DatabasePlace SplitScheme(std::string_view text) {
  DatabasePlace place;
  place.scheme = SchemeOf(text);
  if (place.scheme.empty() || place.scheme.size() + 1 == text.size()) {
    throw Error(
        "A data base is named by sqlite:FILE, postgresql://HOST/BASE, mysql://HOST/BASE or "
        "odbc:NAME");
  }
  place.address = text.substr(place.scheme.size() + 1);
  return place;
}

bool IsWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

bool HoldsWord(std::string_view lower, std::string_view word) {
  for (std::size_t at = lower.find(word); at != lower.npos; at = lower.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    if ((at == 0 || !IsWordByte(lower[at - 1])) &&
        (end == lower.size() || !IsWordByte(lower[end]))) {
      return true;
    }
  }
  return false;
}

}  // namespace

QString SocketOf(const QUrl& url) {
  return QUrlQuery(url).queryItemValue(QStringLiteral("host"), QUrl::FullyDecoded);
}

std::string DatabasePlace::Text() const {
  const std::string base = scheme + ':' + EncodedPart(address);
  if (!query.empty()) return base + '?' + std::string(kQuery) + EncodedPart(query);
  return table.empty() ? base : base + '?' + std::string(kTable) + EncodedPart(table);
}

std::string DatabasePlace::Name() const {
  const std::string base = scheme == kFile ? address : scheme + ':' + address;
  return table.empty() ? base : base + ", table \"" + table + '"';
}

std::string DatabasePlace::Server() const {
  if (scheme == kFile) return {};
  if (scheme == "odbc") return address;
  const QUrl url(QString::fromStdString(scheme + ':' + address));
  return (url.host().isEmpty() ? SocketOf(url) : url.host()).toStdString();
}

std::string DatabasePlace::Title() const {
  if (!table.empty()) return table;
  if (scheme == kFile) return std::filesystem::path(address).stem().string();
  if (scheme == "odbc") return address;
  const QString base = QUrl(QString::fromStdString(scheme + ':' + address)).path().remove('/');
  return base.isEmpty() ? Server() : base.toStdString();
}

bool NamesServer(std::string_view url) {
  const std::string scheme = SchemeOf(url);
  return !scheme.empty() && scheme != kFile;
}

DatabasePlace ParseDatabaseUrl(std::string_view url) {
  std::error_code ignored;  // what cannot be looked at is not taken for a file
  if (SchemeOf(url).empty() && std::filesystem::is_regular_file(url, ignored)) {
    return PlaceOfFile(url);
  }
  DatabasePlace place = SplitScheme(url);
  if (place.scheme == kFile) return PlaceOfFile(place.address);
  RefusePassword(place);
  return place;
}

DatabasePlace PlaceOfFile(const std::filesystem::path& file) {
  std::error_code error;  // a folder that was removed meanwhile has no name
  const std::filesystem::path whole = std::filesystem::absolute(file, error);
  return {"sqlite", (error ? file : whole).lexically_normal().string(), {}, {}};
}

DatabasePlace ParsePlace(std::string_view text) {
  const std::size_t mark = text.find('?');
  DatabasePlace place = SplitScheme(text.substr(0, mark));
  place.address = DecodedPart(place.address);
  RefusePassword(place);
  if (mark == text.npos) return place;
  const std::string_view what = text.substr(mark + 1);
  if (what.starts_with(kTable)) place.table = DecodedPart(what.substr(kTable.size()));
  if (what.starts_with(kQuery)) place.query = DecodedPart(what.substr(kQuery.size()));
  return place;
}

DatabasePlace PlaceOf(const TDSInfo& info) {
  return ParsePlace(PlacedSource(info));
}

std::string ReadingQuery(std::string_view query) {
  std::string text(TrimBlanks(query));
  while (text.ends_with(';') || text.ends_with(' ')) text.pop_back();
  return text;
}

void RequireReadingQuery(std::string_view query) {
  const std::string lower = LowerAscii(ReadingQuery(query));
  std::size_t end = 0;
  while (end < lower.size() && IsWordByte(lower[end])) ++end;
  const std::string first = lower.substr(0, end);
  if (first != "select" && first != "with" && first != "values") {
    throw Error("A data base is only read: the query must begin with SELECT, WITH or VALUES");
  }
  // How servers quote differs, so no quote is trusted to hold a semicolon.
  if (lower.find(';') != lower.npos) {
    throw Error("A data base is only read by one statement: no \";\" may stand inside the query");
  }
  constexpr std::array<std::string_view, 5> kWriting = {"into", "insert", "update", "delete",
                                                        "merge"};
  for (const std::string_view word : kWriting) {
    if (HoldsWord(lower, word)) {
      throw Error("A data base is only read: the query holds the word " + std::string(word) +
                  " (make a view of it if it only reads, and name that as the table)");
    }
  }
}

}  // namespace tarnwick
