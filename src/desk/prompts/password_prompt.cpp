#include "desk/prompts/password_prompt.h"

#include <QString>

#include "base/prompt.h"
#include "sources/database/session_passwords.h"

namespace tarnwick {

bool PasswordAsker::Ask(const PasswordWanted& wanted) {
  auto* const prompt = dynamic_cast<PasswordPrompt*>(&prompt_);
  if (prompt == nullptr || !asked_.insert(wanted.Server()).second) return false;
  const std::optional<QString> password =
      prompt->AskPassword("The data base wants a password: " + wanted.Place() +
                          "\n\nIt is kept until the program ends, never in a file.");
  if (!password || password->isEmpty()) return false;
  RememberPassword(wanted.Server(), *password);
  return true;
}

void RunWithPasswords(Prompt& prompt, const std::function<void()>& work) {
  PasswordAsker passwords(prompt);
  for (;;) {
    try {
      return work();
    } catch (const PasswordWanted& wanted) {
      if (!passwords.Ask(wanted)) throw;
    }
  }
}

}  // namespace tarnwick
