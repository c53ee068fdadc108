#include "cli/output/output.h"

#include "base/error.h"

namespace tarnwick::cli {

void Output::Flush() {
  if (!out_.flush()) throw Error("the answer cannot be written");
}

void Output::Document(const Json& document) {
  WriteJson(document, out_);
  out_ << '\n';
}

}  // namespace tarnwick::cli
