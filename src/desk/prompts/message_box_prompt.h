// The engine's questions as message boxes, and passwords typed unseen.
#pragma once

#include "base/prompt.h"
#include "desk/prompts/password_prompt.h"

class QWidget;

namespace tarnwick {

class MessageBoxPrompt final : public Prompt, public PasswordPrompt {
 public:
  explicit MessageBoxPrompt(QWidget* parent) : parent_(parent) {}
  /// A box with the question's buttons. Esc gives Cancel where that is offered, else the last answer.
  Answer Ask(const Question& question) override;
  void Tell(std::string_view text) override;
  std::optional<QString> AskPassword(const std::string& text) override;

 private:
  QWidget* parent_;
};

}  // namespace tarnwick
