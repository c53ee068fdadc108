// The root of every exception that leaves the engine. Knows texts only; who shows them decides where they go.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarnwick {

/// What the engine throws: one sentence for the user in what().
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Trouble with a file. The message reads "TEXT: FILE, PLACE", or "TEXT: FILE" when the place is empty.
class FileError : public Error {
 public:
  FileError(std::string_view text, std::string_view file, std::string_view place);
  /// The text alone, without file and place.
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace tarnwick
