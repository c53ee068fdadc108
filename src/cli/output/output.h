// Where a command's answer goes: text for people or one JSON document. Knows how the batch program writes numbers.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

namespace tarnwick::cli {

using Json = nlohmann::ordered_json;

/// A number as JSON: undefined is null, infinities are the strings "INF" and "-INF".
Json JsonNumber(double value);
/// The same, null when there is no value.
Json JsonNumber(const std::optional<double>& value);

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
