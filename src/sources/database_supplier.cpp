#include "sources/database_supplier.h"

#include <QDateTime>
#include <QSqlField>
#include <QSqlRecord>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/text/field_value.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostNames = 12;  // in a message

bool IsNumber(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Float:
    case QMetaType::Double:
      return true;
    default:
      return false;
  }
}

/// Formats that a stored number needs no reading by.
bool TakesNumbers(ColumnFormat format) {
  return format == ColumnFormat::Automatic || format == ColumnFormat::Number ||
         format == ColumnFormat::DecimalComma || format == ColumnFormat::GroupedThousands ||
         format == ColumnFormat::NumberWithUnit;
}

std::string TextOf(const QVariant& value) {
  if (value.isNull()) return {};
  if (IsNumber(value)) return ShortestText(value.toDouble());
  switch (value.typeId()) {
    case QMetaType::QDateTime:
      return value.toDateTime().toString(Qt::ISODateWithMs).toStdString();
    case QMetaType::QDate:
      return value.toDate().toString(Qt::ISODate).toStdString();
    case QMetaType::QTime:
      return value.toTime().toString(Qt::ISODateWithMs).toStdString();
    case QMetaType::QString:
      return value.toString().toStdString();
    default:
      return "(bytes)";  // a value, but no number by any format
  }
}

/// Nothing is opened for a query that is refused.
DatabasePlace Readable(DatabasePlace place) {
  if (!place.query.empty()) RequireReadingQuery(place.query);
  return place;
}

}  // namespace

TDBSupplier::TDBSupplier(DatabasePlace place)
    : place_(Readable(std::move(place))),
      name_(place_.Name()),
      connection_(place_),
      query_(connection_.Handle()) {
  query_.setForwardOnly(true);
  const QString count =
      QStringLiteral("SELECT COUNT(*) FROM (%1) AS counted_rows").arg(Statement());
  if (!query_.exec(count)) Fail(query_.lastError());
  if (query_.next()) rows_ = query_.value(0).toLongLong();
  Fetch();
  const QSqlRecord record = query_.record();
  for (int i = 0; i < record.count(); ++i) names_.push_back(record.fieldName(i).toStdString());
}

QString TDBSupplier::Statement() const {
  if (place_.query.empty()) return "SELECT * FROM " + connection_.Quoted(place_.table);
  std::string query(TrimBlanks(place_.query));
  while (query.ends_with(';') || query.ends_with(' ')) query.pop_back();
  return QString::fromStdString(query);
}

void TDBSupplier::Fetch() {
  query_.finish();
  if (!query_.exec(Statement())) Fail(query_.lastError());
  row_ = -1;
  at_end_ = false;
  NextRow();
}

void TDBSupplier::Fail(const QSqlError& error) const {
  const std::vector<std::string> tables = connection_.Tables();
  if (place_.query.empty() && std::ranges::find(tables, place_.table) == tables.end()) {
    const std::string known =
        tables.empty() ? "it has none" : "tables: " + Listed(tables, kMostNames);
    DatabasePlace base = place_;
    base.table.clear();
    throw FileError("There is no table \"" + place_.table + '"', base.Name(), known);
  }
  throw FileError("The data base cannot be read", name_, connection_.TextOf(error));
}

bool TDBSupplier::NextRow() {
  if (at_end_) return true;
  ++row_;
  at_end_ = !query_.next();
  if (at_end_ && query_.lastError().isValid()) Fail(query_.lastError());
  return at_end_;
}

void TDBSupplier::FirstRow() {
  if (row_ != 0) Fetch();
}

void TDBSupplier::SkipRows(std::int32_t rows) {
  for (; rows > 0 && !at_end_; --rows) NextRow();
}

std::int32_t TDBSupplier::CurrentRow() const {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(row_ + 1, std::numeric_limits<std::int32_t>::max()));
}

std::int32_t TDBSupplier::RowCount() {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(rows_, std::numeric_limits<std::int32_t>::max() - 1));
}

bool TDBSupplier::IsColumn(std::int32_t column) const {
  return !at_end_ && column >= 0 && static_cast<std::size_t>(column) < names_.size();
}

std::optional<double> TDBSupplier::ReadValue(std::int32_t column, ColumnFormat format) {
  if (column == kRowNumberColumn && !at_end_) return static_cast<double>(row_ + 1);
  if (!IsColumn(column)) return std::nullopt;
  const QVariant value = query_.value(column);
  if (value.isNull()) return std::nullopt;
  if (!IsNumber(value) || !TakesNumbers(format)) return FieldValue(TextOf(value), format);
  const double number = value.toDouble();
  return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

bool TDBSupplier::HasValue(std::int32_t column) {
  return (column == kRowNumberColumn && !at_end_) || (IsColumn(column) && !query_.isNull(column));
}

std::string TDBSupplier::Place() const {
  return "row " + std::to_string(row_ + 1);
}

std::string TDBSupplier::TextAt(std::int32_t column) {
  return IsColumn(column) ? TextOf(query_.value(column)) : std::string();
}

}  // namespace tarnwick
