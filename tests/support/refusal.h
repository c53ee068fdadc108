// What tested code refuses with, as text to compare.
#pragma once

#include <string>

#include "base/error.h"

namespace tarnwick::testing {

/// The message of the Error that `edit` throws; empty when it throws none.
template <class Edit>
std::string Refusal(Edit&& edit) {
  try {
    edit();
  } catch (const Error& error) {
    return error.what();
  }
  return {};
}

}  // namespace tarnwick::testing
