#include "desk/widgets/expression_edit.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <algorithm>
#include <span>
#include <vector>

#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "expr/expression_parts.h"
#include "expr/words/added_words.h"

namespace tarnwick {
namespace {

constexpr qsizetype kLettersToOffer = 2;
constexpr std::size_t kMostColoured = 2000;      // parts of an expression that somebody reads
constexpr std::size_t kLongestColoured = 20000;  // its bytes
constexpr int kInsertedRole = Qt::UserRole;
constexpr int kWordRole = Qt::UserRole + 1;

QColor Ink(PartKind kind, bool dark) {
  switch (kind) {
    case PartKind::Number:
      return dark ? QColor(125, 185, 255) : QColor(20, 80, 170);
    case PartKind::Text:
      return dark ? QColor(140, 220, 140) : QColor(30, 115, 40);
    case PartKind::Function:
      return dark ? QColor(215, 160, 250) : QColor(125, 30, 160);
    case PartKind::Operator:
    case PartKind::Bracket:
    case PartKind::Name:
      break;
  }
  return {};
}

bool IsLetter(QChar c) {
  return (c.unicode() < 128 && c.isLetterOrNumber()) || c == '_';
}

/// The UTF-16 unit that each byte of a UTF-8 text, and its end, stands at.
std::vector<int> CharactersAt(const std::string& text) {
  std::vector<int> at;
  int next = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool continues = (byte & 0xC0U) == 0x80U;
    at.push_back(continues ? next - 1 : next);
    if (!continues) next += byte >= 0xF0U ? 2 : 1;
  }
  at.push_back(next);
  return at;
}

void AddWord(QStandardItemModel& model, const QString& word, const QString& inserted,
             const QString& help) {
  auto* item = new QStandardItem(help.isEmpty() ? word : word + "  –  " + help);
  item->setData(inserted, kInsertedRole);
  item->setData(word, kWordRole);
  model.appendRow(item);
}

/// What can be completed, with what each word means.
void FillWords(QStandardItemModel& model, const QStringList& names) {
  model.clear();
  for (const QString& name : names) AddWord(model, name, name, {});
  for (const std::span<const BuiltinWord> table : {BuiltinWords(), AddedWords()}) {
    for (const BuiltinWord& word : table) {
      const QString name = QString(word.name).toLower();
      if (!IsLetter(name.front()) || names.contains(name, Qt::CaseInsensitive)) continue;
      const bool takes = word.notation == Notation::Function && word.n_args > 0;
      AddWord(model, name, takes ? name + '(' : name, word.help);
    }
  }
  model.setSortRole(kWordRole);
  model.sort(0);
}

}  // namespace

ExpressionEdit::ExpressionEdit(int lines, QWidget* parent)
    : QPlainTextEdit(parent), completer_(new QCompleter(new QStandardItemModel(this), this)) {
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setTabChangesFocus(true);
  setFixedHeight(lines * fontMetrics().lineSpacing() + 14);
  completer_->setWidget(this);
  completer_->setCompletionRole(kWordRole);
  completer_->setCaseSensitivity(Qt::CaseInsensitive);
  SetNames({});
  connect(completer_, qOverload<const QModelIndex&>(&QCompleter::activated), this,
          &ExpressionEdit::TakeWord);
  connect(this, &QPlainTextEdit::textChanged, this, &ExpressionEdit::Mark);
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, &ExpressionEdit::Mark);
}

std::string ExpressionEdit::Expression() const {
  return toPlainText().replace('\n', ' ').toStdString();
}

void ExpressionEdit::SetExpression(const std::string& text) {
  setPlainText(ToQt(text));
}

void ExpressionEdit::SetNames(const QStringList& names) {
  if (names == names_ && completer_->model()->rowCount() > 0) return;
  names_ = names;
  FillWords(*qobject_cast<QStandardItemModel*>(completer_->model()), names);
  Mark();
}

void ExpressionEdit::ShowTrouble(const std::string& why, std::optional<std::size_t> place) {
  is_wrong_ = !why.empty();
  wrong_place_ = place;
  MarkWrong(*this, ToQt(why));
  Mark();
}

void ExpressionEdit::Insert(const QString& text) {
  textCursor().insertText(text);
  setFocus();
}

QTextEdit::ExtraSelection ExpressionEdit::Selection(int from, int to) const {
  QTextEdit::ExtraSelection one;
  one.cursor = textCursor();
  one.cursor.setPosition(from);
  one.cursor.setPosition(to, QTextCursor::KeepAnchor);
  return one;
}

void ExpressionEdit::Mark() {
  const std::string text = Expression();
  const std::vector<int> characters = CharactersAt(text);
  const auto selection = [&](std::size_t place, std::size_t length) {
    return Selection(characters[place], characters[std::min(place + length, text.size())]);
  };
  std::vector<ExpressionPart> parts;
  if (text.size() <= kLongestColoured) parts = PartsOf(text);
  if (parts.size() > kMostColoured) parts.resize(kMostColoured);
  // What is red is light on every desktop.
  const bool dark = !is_wrong_ && palette().color(QPalette::Base).lightness() < 128;
  const int cursor = textCursor().position();
  QList<QTextEdit::ExtraSelection> marks;
  for (const ExpressionPart& part : parts) {
    QTextEdit::ExtraSelection mark = selection(part.place, part.length);
    if (const QColor ink = Ink(part.kind, dark); ink.isValid()) mark.format.setForeground(ink);
    if (part.kind == PartKind::Name &&
        !names_.contains(mark.cursor.selectedText(), Qt::CaseInsensitive)) {
      mark.format.setUnderlineStyle(QTextCharFormat::DotLine);
    }
    const bool at_cursor =
        mark.cursor.selectionEnd() == cursor || mark.cursor.selectionStart() == cursor;
    if (part.kind == PartKind::Bracket && at_cursor && part.partner &&
        *part.partner < parts.size()) {
      const ExpressionPart& partner = parts[*part.partner];
      QTextEdit::ExtraSelection other = selection(partner.place, partner.length);
      for (QTextEdit::ExtraSelection* bracket : {&mark, &other}) {
        bracket->format.setBackground(dark ? QColor(70, 95, 60) : QColor(190, 225, 170));
        bracket->format.setFontWeight(QFont::Bold);
      }
      marks.append(other);
    }
    marks.append(mark);
  }
  if (is_wrong_ && wrong_place_ && !text.empty()) {
    QTextEdit::ExtraSelection mark = selection(std::min(*wrong_place_, text.size() - 1), 1);
    mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    mark.format.setUnderlineColor(QColor(200, 0, 0));
    mark.format.setBackground(QColor(255, 150, 150));
    marks.append(mark);
  }
  setExtraSelections(marks);
}

QString ExpressionEdit::WordBeforeCursor() const {
  const QString text = toPlainText();
  const qsizetype end = textCursor().position();
  qsizetype from = end;
  while (from > 0 && IsLetter(text[from - 1])) --from;
  while (from < end && text[from].isDigit()) ++from;  // 2e is no word's beginning
  return text.mid(from, end - from);
}

void ExpressionEdit::keyPressEvent(QKeyEvent* event) {
  if (completer_->popup()->isVisible()) {
    switch (event->key()) {
      case Qt::Key_Enter:
      case Qt::Key_Return:
      case Qt::Key_Escape:
      case Qt::Key_Tab:
      case Qt::Key_Backtab:
        return event->ignore();  // they are the list's
      default:
        break;
    }
  }
  const bool wanted =
      event->key() == Qt::Key_Space && event->modifiers().testFlag(Qt::ControlModifier);
  if (!wanted) QPlainTextEdit::keyPressEvent(event);
  const QString begun = WordBeforeCursor();
  const bool typed = !event->text().isEmpty() && IsLetter(event->text().front());
  if (!wanted && (!typed || begun.size() < kLettersToOffer)) return completer_->popup()->hide();
  OfferWords(begun);
  // Nothing is taken by itself from a list that nobody asked for.
  if (!wanted) completer_->popup()->setCurrentIndex({});
}

void ExpressionEdit::OfferWords(const QString& begun) {
  completer_->setCompletionPrefix(begun);
  const QModelIndex first = completer_->completionModel()->index(0, 0);
  const bool whole = completer_->completionCount() == 1 &&
                     first.data(kWordRole).toString().compare(begun, Qt::CaseInsensitive) == 0;
  if (completer_->completionCount() == 0 || whole) return completer_->popup()->hide();
  completer_->popup()->setCurrentIndex(first);
  QRect place = cursorRect();
  place.setWidth(completer_->popup()->sizeHintForColumn(0) +
                 completer_->popup()->verticalScrollBar()->sizeHint().width());
  completer_->complete(place);
}

void ExpressionEdit::TakeWord(const QModelIndex& chosen) {
  QTextCursor cursor = textCursor();
  cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor,
                      static_cast<int>(WordBeforeCursor().size()));
  QString inserted = chosen.data(kInsertedRole).toString();
  const bool bracket_follows = document()->characterAt(textCursor().position()) == '(';
  if (inserted.endsWith('(') && bracket_follows) inserted.chop(1);
  cursor.insertText(inserted);
  setTextCursor(cursor);
}

}  // namespace tarnwick
