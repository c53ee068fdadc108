// Where a command's answer goes: text for people or one JSON document.
#pragma once

#include <ostream>

#include "cli/output/json.h"

namespace tarnwick::cli {

class Output {
 public:
  enum class Form { Text, Document };

  Output(std::ostream& out, std::ostream& err, Form form) : out_(out), err_(err), form_(form) {}

  bool IsJson() const { return form_ == Form::Document; }
  std::ostream& Text() { return out_; }
  /// Throws Error when what was written does not arrive.
  void Flush();
  /// For remarks beside the answer; never part of it.
  std::ostream& Remarks() { return err_; }
  /// Writes the one document.
  void Document(const Json& document);

 private:
  std::ostream& out_;
  std::ostream& err_;
  Form form_;
};

}  // namespace tarnwick::cli
