// The engine's questions as message boxes.
#pragma once

#include "base/prompt.h"

class QWidget;

namespace tarnwick {

class MessageBoxPrompt final : public Prompt {
 public:
  explicit MessageBoxPrompt(QWidget* parent) : parent_(parent) {}
  /// A box with the question's buttons. Esc gives Cancel where that is offered, else the last answer.
  Answer Ask(const Question& question) override;
  void Tell(std::string_view text) override;

 private:
  QWidget* parent_;
};

}  // namespace tarnwick
