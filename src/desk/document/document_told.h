// What the user of a document is told of the reading of its data, and what he has closed of it. A plain value; knows no
// document and no widget.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "data/import/import_told.h"

namespace tarnwick {

class DocumentTold {
 public:
  /// One sentence; empty when there is nothing to tell, or nothing any more.
  std::string Text() const { return closed_ ? std::string() : Sentence(told_); }

  /// Stands behind what is told already, unless that was closed.
  void Add(const ImportTold& told);
  /// Stands in place of it. What was closed stays so while nothing new is told.
  void Replace(const ImportTold& told);
  /// The same data were read again as they were before: what was guessed of them still holds, unless `told` says it anew.
  void ReadAgain(const ImportTold& told);
  void Close() { closed_ = true; }
  bool Tells(ToldAbout about) const { return !closed_ && IsAbout(told_, about); }
  /// The header lines with which another table of the file is read that is told.
  std::optional<std::int32_t> OtherTable() const;
  /// What is about this is no longer so.
  void Drop(ToldAbout about);
  void Clear() { *this = {}; }
  const ImportTold& All() const { return told_; }
  /// What was told when the graph was as it is again; of what a view shows now, what is told now.
  void GoBackTo(const ImportTold& told);

 private:
  ImportTold told_;
  bool closed_ = false;
};

}  // namespace tarnwick
