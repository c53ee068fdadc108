#include "desk/prompts/message_box_prompt.h"

#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kPasswordWidth = 420;

QMessageBox::Icon IconOf(Question::Kind kind) {
  switch (kind) {
    case Question::Kind::Confirmation:
      return QMessageBox::Question;
    case Question::Kind::Warning:
      return QMessageBox::Warning;
    case Question::Kind::Error:
      return QMessageBox::Critical;
    case Question::Kind::Information:
      return QMessageBox::Information;
  }
  return QMessageBox::NoIcon;
}

QAbstractButton* AddButton(QMessageBox& box, Answer answer) {
  switch (answer) {
    case Answer::Yes:
      return box.addButton(QMessageBox::Yes);
    case Answer::No:
      return box.addButton(QMessageBox::No);
    case Answer::Cancel:
      return box.addButton(QMessageBox::Cancel);
    case Answer::YesToAll:
      return box.addButton(QMessageBox::YesToAll);
    case Answer::All:
      return box.addButton(QObject::tr("&All"), QMessageBox::YesRole);
    case Answer::Ok:
      return box.addButton(QMessageBox::Ok);
  }
  return nullptr;
}

/// Where the answer stands that changes least: it is given by Esc, and by closing the box.
std::size_t EscapeOf(const std::vector<Answer>& answers) {
  for (const Answer harmless : {Answer::Cancel, Answer::No}) {
    const auto found = std::find(answers.begin(), answers.end(), harmless);
    if (found != answers.end()) return static_cast<std::size_t>(found - answers.begin());
  }
  return answers.size() - 1;
}

/// A question on the way up needs its program behind it.
void ShowProgram(QWidget* parent) {
  if (parent && !parent->isVisible()) parent->show();
}

}  // namespace

Answer MessageBoxPrompt::Ask(const Question& question) {
  ShowProgram(parent_);
  QMessageBox box(IconOf(question.kind), QObject::tr("Tarnwick"), ToQt(question.text),
                  QMessageBox::NoButton, parent_);
  box.setTextFormat(Qt::PlainText);
  std::vector<QAbstractButton*> buttons;
  for (const Answer answer : question.answers) buttons.push_back(AddButton(box, answer));
  box.setDefaultButton(qobject_cast<QPushButton*>(buttons.front()));
  const std::size_t escape = EscapeOf(question.answers);
  box.setEscapeButton(buttons[escape]);
  box.exec();
  const auto clicked = std::find(buttons.begin(), buttons.end(), box.clickedButton());
  if (clicked == buttons.end()) return question.answers[escape];
  return question.answers[static_cast<std::size_t>(clicked - buttons.begin())];
}

void MessageBoxPrompt::Tell(std::string_view text) {
  QMessageBox box(QMessageBox::Warning, QObject::tr("Tarnwick"), ToQt(text), QMessageBox::Ok,
                  parent_);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

std::optional<QString> MessageBoxPrompt::AskPassword(const std::string& text) {
  ShowProgram(parent_);
  QInputDialog dialog(parent_);
  dialog.setObjectName("Password");
  dialog.setWindowTitle(QObject::tr("Password"));
  dialog.setTextEchoMode(QLineEdit::Password);
  dialog.setLabelText(ToQt(text));
  // What a graph names may hold anything, and much of it.
  auto* const label = dialog.findChild<QLabel*>();
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  dialog.setMinimumWidth(kPasswordWidth);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.textValue();
}

}  // namespace tarnwick
