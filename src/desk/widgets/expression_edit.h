// A field for an expression: colours what is written, shows the brackets that belong together, completes names, underlines the
// place of trouble. Knows the words of formulas; whether the expression is good is decided elsewhere.
#pragma once

#include <QPlainTextEdit>
#include <QStringList>
#include <cstddef>
#include <optional>
#include <string>

class QCompleter;

namespace tarnwick {

class ExpressionEdit final : public QPlainTextEdit {
  Q_OBJECT

 public:
  /// `lines` high.
  explicit ExpressionEdit(int lines, QWidget* parent = nullptr);

  /// UTF-8, one line however it was typed.
  std::string Expression() const;
  void SetExpression(const std::string& text);
  /// What means something here beside the words of every formula: variable, parameters.
  void SetNames(const QStringList& names);
  /// Turns the field red, underlines the byte `place`; an empty text makes it an ordinary field again.
  void ShowTrouble(const std::string& why, std::optional<std::size_t> place = {});
  /// At the cursor, in place of what is selected, and goes on typing.
  void Insert(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Mark();
  QTextEdit::ExtraSelection Selection(int from, int to) const;
  QString WordBeforeCursor() const;
  void OfferWords(const QString& begun);
  void TakeWord(const QModelIndex& chosen);

  QStringList names_;
  QCompleter* completer_;
  bool is_wrong_ = false;
  std::optional<std::size_t> wrong_place_;
};

}  // namespace tarnwick
