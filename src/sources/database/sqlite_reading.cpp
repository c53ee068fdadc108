#include "sources/database/sqlite_reading.h"

#include <limits>

#include "base/error.h"
#include "base/number_text.h"
#include "data/fields/field_value.h"
#include "data/packed/unpack.h"
#include "data/text/stored_format.h"

namespace tarnwick {
namespace {

constexpr int kStepsBetweenLooks =
    20'000;  // of the machine that runs statements: about a millisecond
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr const char* kTaking = "tarnwick_take";

std::string TextOf(sqlite3_value* value) {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  const int bytes = sqlite3_value_bytes(value);
  return text == nullptr ? std::string() : std::string(text, static_cast<std::size_t>(bytes));
}

}  // namespace

std::string SqliteName(const std::string& name) {
  std::string text = "\"";
  for (const char c : name) text += c == '"' ? std::string("\"\"") : std::string(1, c);
  return text + '"';
}

std::string SqliteLiteral(const std::string& value) {
  std::string text = "'";
  for (const char c : value) text += c == '\'' ? std::string("''") : std::string(1, c);
  return text + '\'';
}

std::string SqliteLiteral(double value) {
  // A whole number would be compared as one, which is right, too, but larger ones do not fit.
  const std::string text = ShortestText(value);
  return text.find_first_of(".eE") == text.npos ? text + ".0" : text;
}

SqliteFile::SqliteFile(const DatabasePlace& place, Progress& progress)
    : name_(place.Name()), progress_(progress) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(place.address.c_str(), &opened,
                                     SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  base_.reset(opened);
  Require(result == SQLITE_OK);
  sqlite3_busy_timeout(opened, 5000);
  sqlite3_progress_handler(
      opened, kStepsBetweenLooks,
      [](void* of) { return static_cast<SqliteFile*>(of)->HasToStop() ? 1 : 0; }, this);
}

void SqliteFile::Require(bool done) const {
  if (done) return;
  if (progress_.Cancelled()) throw UnpackingCancelled("Reading " + name_ + " was cancelled");
  if (IsLate()) throw Error(TookTooLong(name_));
  throw FileError("The data base cannot be read", name_, sqlite3_errmsg(base_.get()));
}

SqliteStatement::SqliteStatement(const SqliteFile& file, const std::string& text) : file_(file) {
  sqlite3_stmt* made = nullptr;
  const int result = sqlite3_prepare_v2(file.Base(), text.c_str(), -1, &made, nullptr);
  statement_.reset(made);
  file.Require(result == SQLITE_OK);
}

bool SqliteStatement::Next() const {
  const int result = sqlite3_step(statement_.get());
  file_.Require(result == SQLITE_ROW || result == SQLITE_DONE);
  return result == SQLITE_ROW;
}

double SqliteNumber(sqlite3_value* value, ColumnFormat format) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: {
      const double number = sqlite3_value_double(value);
      if (TakesNumbers(format)) return number;
      return ValueOfField(ShortestText(number), format).value_or(kNone);
    }
    case SQLITE_TEXT:
      return ValueOfField(TextOf(value), format).value_or(kNone);
    default:
      return kNone;
  }
}

void HandSqliteRows(const SqliteFile& file, const std::string& columns, const std::string& from,
                    const SqliteRowTaker& take) {
  const auto step = [](sqlite3_context* context, int count, sqlite3_value** row) {
    (*static_cast<const SqliteRowTaker*>(sqlite3_user_data(context)))(
        {row, static_cast<std::size_t>(count)});
  };
  file.Require(sqlite3_create_function_v2(
                   file.Base(), kTaking, -1, SQLITE_UTF8, const_cast<SqliteRowTaker*>(&take),
                   nullptr, step, [](sqlite3_context*) {}, nullptr) == SQLITE_OK);
  SqliteStatement(file, std::string("SELECT ") + kTaking + '(' + columns + ") FROM " + from).Next();
}

}  // namespace tarnwick
