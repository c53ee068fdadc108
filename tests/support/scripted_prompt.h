// A Prompt that plays a script: the test states which texts must come, in which order, and what to answer. Knows nothing
// of who asks.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "base/prompt.h"

namespace tarnwick::testing {

class ScriptedPrompt final : public Prompt {
 public:
  /// One thing the tested code is to say: a question with the answer it gets, or a text told.
  struct Line {
    std::string text;
    Answer answer = Answer::Ok;  ///< ignored for a text told
    bool told = false;
  };

  ScriptedPrompt() = default;
  /// Fails the running test when a part of the script has not been played.
  ~ScriptedPrompt() override;

  /// Adds a question to the end of the script; answers itself, so that lines can be chained.
  ScriptedPrompt& Expect(std::string text, Answer answer);
  /// Adds a text that will be told.
  ScriptedPrompt& ExpectTold(std::string text);

  /// Fails the test for a question the script does not have next, and for an answer that was not offered; such a
  /// question gets the last answer offered, the most careful one.
  Answer Ask(const Question& question) override;
  void Tell(std::string_view text) override;

  /// Every question asked, as it came: for tests that look at the kind or at the answers offered.
  [[nodiscard]] const std::vector<Question>& Asked() const { return asked_; }

 private:
  std::deque<Line> script_;
  std::vector<Question> asked_;
};

}  // namespace tarnwick::testing
