// How much a stream brought, as both faces tell it. Knows counts; knows no stream.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick {

struct StreamRows;

struct CameRows {
  std::int64_t rows = 0;
  std::int64_t lost = 0;
  std::int64_t unreadable = 0;

  void Count(const StreamRows& taken);
  /// "3 rows came, 2 rows lost, 1 line without numbers"; `piece` is what may hold none: "line".
  std::string Text(std::string_view piece) const;
  bool operator==(const CameRows&) const = default;
};

}  // namespace tarnwick
