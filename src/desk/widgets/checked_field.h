// Input that is checked as it is typed: a field that cannot be used turns red and says why.
#pragma once

#include <QLineEdit>
#include <optional>

namespace tarnwick {

/// Turns the widget red with `why` as its tool tip; an empty text makes it an ordinary field again.
void MarkWrong(QWidget& field, const QString& why);

/// The colour behind what cannot be used.
QColor WrongColor();

/// Of a text that says what is wrong, readable on the desktop's windows, light or dark.
QColor WrongTextColor();

/// A field for one number, "." or "," before its decimals.
class NumberEdit final : public QLineEdit {
  Q_OBJECT

 public:
  enum class Accepts { AnyNumber, FromZero, AboveZero };

  explicit NumberEdit(Accepts accepts = Accepts::AnyNumber, QWidget* parent = nullptr);
  void SetNumber(double number);
  /// Nothing while the text is no number that the field accepts. A text left as it was set means that number exactly.
  std::optional<double> Number() const;
  /// Why it gives none; empty where it does.
  QString Trouble() const;

 private:
  void Check();

  Accepts accepts_;
  QString tip_;  // of the field while it shows its trouble
  bool wrong_ = false;
};

}  // namespace tarnwick
