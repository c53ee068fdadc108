// A stored value as the loader takes it: a number, or a text that a format reads. Knows no data base.
#pragma once

#include <QVariant>
#include <optional>
#include <string>

#include "data/ds_info.h"

namespace tarnwick {

/// True for values, and types of columns, that are numbers; truth is one.
bool IsStoredNumber(QMetaType type);

/// The value as a text that ValueOfField reads; empty for none.
std::string StoredText(const QVariant& value);

/// Numbers as they stand (truth is 1, else 0), dates and times as day numbers, texts as the format reads them; nothing for
/// what is no finite number.
std::optional<double> StoredNumber(const QVariant& value, ColumnFormat format);

}  // namespace tarnwick
