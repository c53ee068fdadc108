#include "sources/database/database_value.h"

#include <QDateTime>
#include <cmath>

#include "base/number_text.h"
#include "data/fields/field_value.h"
#include "data/text/stored_format.h"

namespace tarnwick {

bool IsStoredNumber(QMetaType type) {
  switch (type.id()) {
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

std::string StoredText(const QVariant& value) {
  if (value.isNull()) return {};
  if (IsStoredNumber(value.metaType())) return ShortestText(value.toDouble());
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

std::optional<double> StoredNumber(const QVariant& value, ColumnFormat format) {
  if (value.isNull()) return std::nullopt;
  if (!IsStoredNumber(value.metaType()) || !TakesNumbers(format)) {
    return ValueOfField(StoredText(value), format);
  }
  const double number = value.toDouble();
  return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace tarnwick
