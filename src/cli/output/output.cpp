#include "cli/output/output.h"

#include <algorithm>

#include "base/error.h"

namespace tarnwick::cli {

void Output::Flush() {
  if (!out_.flush()) throw Error("the answer cannot be written");
}

void Output::Note(const std::string& sentence) {
  const bool told = std::ranges::find(sentences_, sentence) != sentences_.end();
  if (notes_ == Notes::Told && !sentence.empty() && !told) sentences_.push_back(sentence);
}

void Output::TellNotes() {
  for (const std::string& sentence : sentences_) err_ << "tarnwick-cli: note: " << sentence << '\n';
  err_.flush();
  sentences_.clear();
}

void Output::Document(const Json& document) {
  WriteJson(document, out_);
  out_ << '\n';
}

}  // namespace tarnwick::cli
