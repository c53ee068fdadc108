#include "support/scripted_prompt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace tarnwick::testing {

ScriptedPrompt::~ScriptedPrompt() {
  for (const Line& line : script_) ADD_FAILURE() << "was never said: " << line.text;
}

ScriptedPrompt& ScriptedPrompt::Expect(std::string text, Answer answer) {
  script_.push_back({std::move(text), answer, false});
  return *this;
}

ScriptedPrompt& ScriptedPrompt::ExpectTold(std::string text) {
  script_.push_back({std::move(text), Answer::Ok, true});
  return *this;
}

Answer ScriptedPrompt::Ask(const Question& question) {
  asked_.push_back(question);
  const Answer careful = question.answers.empty() ? Answer::Cancel : question.answers.back();
  if (script_.empty() || script_.front().told) {
    ADD_FAILURE() << "unexpected question: " << question.text;
    return careful;
  }
  const Line line = std::move(script_.front());
  script_.pop_front();
  EXPECT_EQ(question.text, line.text);
  if (std::find(question.answers.begin(), question.answers.end(), line.answer) ==
      question.answers.end()) {
    ADD_FAILURE() << "the script's answer is not offered by: " << question.text;
    return careful;
  }
  return line.answer;
}

void ScriptedPrompt::Tell(std::string_view text) {
  if (script_.empty() || !script_.front().told) {
    ADD_FAILURE() << "unexpected text: " << text;
    return;
  }
  EXPECT_EQ(text, script_.front().text);
  script_.pop_front();
}

}  // namespace tarnwick::testing
