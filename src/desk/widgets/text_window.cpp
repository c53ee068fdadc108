#include "desk/widgets/text_window.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

namespace tarnwick {

TextWindow::TextWindow(const QString& caption, const QString& text, QWidget* parent)
    : QDialog(parent), text_(new QPlainTextEdit(text, this)) {
  setObjectName("TextWindow");
  setWindowTitle(caption);
  resize(560, 520);
  text_->setReadOnly(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setAccessibleName(caption);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  auto* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
  auto* print = buttons->addButton(tr("&Print…"), QDialogButtonBox::ActionRole);
  connect(copy, &QPushButton::clicked, this, &TextWindow::Copy);
  connect(print, &QPushButton::clicked, this, &TextWindow::Print);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->addWidget(text_, 1);
  column->addWidget(buttons);
  buttons->button(QDialogButtonBox::Close)->setDefault(true);
}

/// What is selected, or all of it.
void TextWindow::Copy() {
  if (text_->textCursor().hasSelection()) {
    text_->copy();
  } else {
    QApplication::clipboard()->setText(text_->toPlainText());
  }
}

void TextWindow::Print() {
  QPrinter printer;
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() == QDialog::Accepted) text_->print(&printer);
}

}  // namespace tarnwick
