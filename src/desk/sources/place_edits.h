// The kinds of sources whose place is more than a file's name, as rows of a table. Knows how each edit is made.
#pragma once

#include <span>
#include <string_view>

#include "data/ds_info.h"

class QWidget;

namespace tarnwick {

class PlaceEdit;

struct PlaceEditRow {
  DataSourceKind kind = DataSourceKind::Manual;
  std::string_view caption;  ///< "Data base"; several rows may be of one kind
  PlaceEdit* (*make)(QWidget* parent) = nullptr;
  /// Whether a source of this kind can be opened by its place alone; false for what begins with a file of its own.
  bool opens_new = true;
};

std::span<const PlaceEditRow> PlaceEdits();

/// The first row of a kind; null for kinds that are told by a file's name.
const PlaceEditRow* PlaceEditOf(DataSourceKind kind);

}  // namespace tarnwick
