// Where a command's answer goes: text for people or one JSON document.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "cli/output/json.h"

namespace tarnwick::cli {

class Output {
 public:
  enum class Form { Text, Document };

  enum class Notes { Told, Quiet };

  Output(std::ostream& out, std::ostream& err, Form form, Notes notes)
      : out_(out), err_(err), form_(form), notes_(notes) {}

  bool IsJson() const { return form_ == Form::Document; }
  std::ostream& Text() { return out_; }
  /// Throws Error when what was written does not arrive.
  void Flush();
  /// For remarks beside the answer; never part of it.
  std::ostream& Remarks() { return err_; }
  /// A sentence about what was decided on the way. It is told once, when the command is done, unless --quiet stands.
  void Note(const std::string& sentence);
  void TellNotes();
  /// Writes the one document.
  void Document(const Json& document);

 private:
  std::ostream& out_;
  std::ostream& err_;
  Form form_;
  Notes notes_;
  std::vector<std::string> sentences_;
};

}  // namespace tarnwick::cli
