// Where a data base and what is read from it stand, as one text that a DataSet's description keeps. Knows the form of that
// text and which queries only read; opens nothing.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "data/ds_info.h"

class QString;
class QUrl;

namespace tarnwick {

/// A data base, and the table, view or query to read from it. With neither, its first table with numbers is meant.
struct DatabasePlace {
  std::string scheme;   ///< "sqlite", "postgresql", "mysql" or "odbc"
  std::string address;  ///< of SQLite the file; else what stands behind the scheme's colon
  std::string table;    ///< empty: none is named
  std::string query;    ///< empty: none is given

  /// "sqlite:/data/runs.db?table=first"; ParsePlace reads it back.
  std::string Text() const;
  /// The same without the query, for messages.
  std::string Name() const;
  /// Who is asked: the host of an address, the name of an ODBC source. Empty for files.
  std::string Server() const;
  /// What a plot of it is called: the table, else the data base, else who is asked.
  std::string Title() const;
};

/// The folder of the local socket that an address names: "postgresql:///BASE?host=/run/postgresql". Empty where it names none.
QString SocketOf(const QUrl& url);

/// Whether the address is one of a server, not of a file.
bool NamesServer(std::string_view url);

/// The data base that the user names: "sqlite:FILE", a file that is there, "postgresql://HOST/BASE", "mysql://HOST/BASE" or
/// "odbc:NAME". A file is found from any folder then. Throws Error for what names none, and for an address with a password.
DatabasePlace ParseDatabaseUrl(std::string_view url);

/// The place of an SQLite file.
DatabasePlace PlaceOfFile(const std::filesystem::path& file);

/// Reads back what Text() wrote. Throws what ParseDatabaseUrl throws.
DatabasePlace ParsePlace(std::string_view text);

/// What a description names, its file where it lies now. Throws what ParsePlace throws.
DatabasePlace PlaceOf(const TDSInfo& info);

/// The query without what ends it.
std::string ReadingQuery(std::string_view query);

/// Throws Error, saying why, unless `query` is one statement that begins as one that only reads does. What a server would
/// do all the same, the connection refuses, which is for reading only.
void RequireReadingQuery(std::string_view query);

}  // namespace tarnwick
