// Asking for the passwords of servers when reading turns out to want them. What is typed is kept until the program ends, in
// memory only. Knows no document and no widget.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>

class QString;

namespace tarnwick {

class PasswordWanted;
class Prompt;

/// What a Prompt is, too, where somebody sits who can type a password unseen.
class PasswordPrompt {
 public:
  virtual ~PasswordPrompt() = default;
  /// Nothing when the user gives none.
  virtual std::optional<QString> AskPassword(const std::string& text) = 0;

 protected:
  PasswordPrompt() = default;
  PasswordPrompt(const PasswordPrompt&) = default;
  PasswordPrompt& operator=(const PasswordPrompt&) = default;
};

/// Asks for the password of each server once in its life.
class PasswordAsker {
 public:
  /// `prompt` outlives it. One that takes no passwords gives none.
  explicit PasswordAsker(Prompt& prompt) : prompt_(prompt) {}
  /// True: one was typed, so that another try is worth while.
  bool Ask(const PasswordWanted& wanted);

 private:
  Prompt& prompt_;
  std::set<std::string> asked_;
};

/// Does `work`, and does it again with every password that it turns out to want and that is typed. Throws what it throws,
/// PasswordWanted of a server that was asked for before.
void RunWithPasswords(Prompt& prompt, const std::function<void()>& work);

}  // namespace tarnwick
