// What the expression engine throws. Knows a message and the place in the expression that it is about.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "base/error.h"

namespace tarnwick {

/// An expression that cannot be compiled, or a word that cannot be made. The message is a fixed text.
class EParserException : public Error {
 public:
  explicit EParserException(const std::string& message, std::optional<std::size_t> place = {},
                            std::string hint = {}, std::optional<std::size_t> hint_place = {})
      : Error(message), place_(place), hint_(std::move(hint)), hint_place_(hint_place) {}

  /// The byte of the expression, from 0, where the trouble was met; nothing when it has no place.
  std::optional<std::size_t> Place() const { return place_; }
  /// Where it probably stands: what the hint is about, else Place.
  std::optional<std::size_t> LikelyPlace() const { return hint_place_ ? hint_place_ : place_; }
  /// What is probably wrong, to be shown behind the message; may be empty.
  const std::string& Hint() const { return hint_; }

 private:
  std::optional<std::size_t> place_;
  std::string hint_;
  std::optional<std::size_t> hint_place_;
};

/// An integer division that has no result: by zero, or of the smallest integer by -1.
class EIntegerDivision : public Error {
 public:
  using Error::Error;
};

}  // namespace tarnwick
