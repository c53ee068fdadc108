// How the engine asks and tells without knowing a window: message boxes on the desktop, options in the batch program, a
// script in tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

enum class Answer { Yes, No, Cancel, YesToAll, All, Ok };

/// A question with the answers offered, the most expected one first.
struct Question {
  enum class Kind { Confirmation, Warning, Error, Information };

  std::string text;
  std::vector<Answer> answers = {Answer::Yes, Answer::No};
  Kind kind = Kind::Confirmation;
};

class Prompt {
 public:
  virtual ~Prompt() = default;
  /// Answers one of `question.answers`.
  virtual Answer Ask(const Question& question) = 0;
  /// Shows a text that needs no answer.
  virtual void Tell(std::string_view text) = 0;

 protected:
  Prompt() = default;
  Prompt(const Prompt&) = default;
  Prompt& operator=(const Prompt&) = default;
};

}  // namespace tarnwick
