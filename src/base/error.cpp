#include "base/error.h"

namespace tarnwick {
namespace {

std::string Message(std::string_view text, std::string_view file, std::string_view place) {
  std::string message(text);
  message.append(": ").append(file);
  if (!place.empty()) message.append(", ").append(place);
  return message;
}

}  // namespace

FileError::FileError(std::string_view text, std::string_view file, std::string_view place)
    : Error(Message(text, file, place)), text_(text) {}

}  // namespace tarnwick
