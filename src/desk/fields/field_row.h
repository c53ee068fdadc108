// A stored field as an editor sees it, whoever owns it: a row of its table without the access. Knows no widget.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stream/field_table.h"

namespace tarnwick {

struct FieldRow {
  int number = 0;
  std::string_view key;
  FieldLook look;
};

template <class Owner>
std::vector<FieldRow> RowsOf(FieldTable<Owner> table) {
  std::vector<FieldRow> rows;
  for (const Field<Owner>& field : table) rows.push_back({field.number, field.key, field.look});
  return rows;
}

/// What is said beside a field that is being changed.
struct FieldRemark {
  enum class Kind { None, Told, Refused };
  Kind kind = Kind::None;
  std::string text;
  std::optional<std::size_t> place = {};  ///< the byte of what was typed that it is about

  static FieldRemark Told(std::string text) { return {Kind::Told, std::move(text), {}}; }
  static FieldRemark Refused(std::string text, std::optional<std::size_t> place = {}) {
    return {Kind::Refused, std::move(text), place};
  }
  bool Refuses() const { return kind == Kind::Refused; }
};

/// What a field's control needs to know of the graph around it.
struct FieldSurroundings {
  std::vector<std::string> data_sets;     ///< their names, for fields that name one
  std::vector<std::string> columns = {};  ///< of the data source, for fields that name one
  bool moments = false;                   ///< values of this place are dates and times
};

}  // namespace tarnwick
