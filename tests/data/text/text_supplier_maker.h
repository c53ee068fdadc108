// Suppliers over texts written in a test.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "data/text/text_supplier.h"

namespace tarnwick::testing {

inline std::unique_ptr<TTxtSupplier> SupplierOf(const TDSInfo& info, std::string text) {
  auto source = std::make_shared<const TextSource>(std::move(text), "a text");
  return std::make_unique<TTxtSupplier>(info, std::move(source));
}

}  // namespace tarnwick::testing
