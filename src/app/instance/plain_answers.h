// What the desktop program answers on standard output and standard error, where it opens no window.
#pragma once

#include <QtGlobal>
#include <optional>
#include <string>
#include <vector>

namespace tarnwick {

/// The answer to "--help" (or "-h") and "--version", wherever they stand among the words; none when a window is wanted.
std::optional<std::string> PlainAnswer(const std::vector<std::string>& words);

/// The first word that begins as an option with two dashes and is none, neither ours nor Qt's.
std::optional<std::string> UnknownOption(const std::vector<std::string>& words);

/// While it lives, an application that finds no display says so in one sentence and ends with status 1, where Qt aborts.
class ExplainedStart {
 public:
  ExplainedStart();
  ~ExplainedStart();
  ExplainedStart(const ExplainedStart&) = delete;
  ExplainedStart& operator=(const ExplainedStart&) = delete;

 private:
  QtMessageHandler before_;
};

}  // namespace tarnwick
