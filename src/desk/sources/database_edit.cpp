#include "desk/sources/database_edit.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include "base/error.h"
#include "desk/widgets/text.h"
#include "sources/database_place.h"

namespace tarnwick {
namespace {

constexpr int kQueryLines = 4;

}  // namespace

DatabaseEdit::DatabaseEdit(QWidget* parent)
    : PlaceEdit(parent),
      address_(new QLineEdit(this)),
      table_(new QLineEdit(this)),
      query_(new QPlainTextEdit(this)) {
  address_->setObjectName("DatabaseAddress");
  address_->setPlaceholderText("sqlite:FILE, postgresql://USER@HOST/BASE, mysql://… or odbc:NAME");
  table_->setObjectName("DatabaseTable");
  table_->setPlaceholderText(tr("its first table with numbers"));
  query_->setObjectName("DatabaseQuery");
  query_->setPlaceholderText(tr("SELECT … instead of a table"));
  query_->setTabChangesFocus(true);
  query_->setFixedHeight(kQueryLines * fontMetrics().lineSpacing() + 2 * query_->frameWidth() + 8);
  auto* const browse = new QPushButton(tr("&File..."), this);
  browse->setAutoDefault(false);
  auto* const line = new QHBoxLayout;
  line->addWidget(address_, 1);
  line->addWidget(browse);
  auto* const form = new QFormLayout(this);
  form->setContentsMargins(0, 0, 0, 0);
  auto* const caption = new QLabel(tr("&Data base:"), this);
  caption->setBuddy(address_);
  form->addRow(caption, line);
  form->addRow(tr("&Table:"), table_);
  form->addRow(tr("&Query:"), query_);
  setFocusProxy(address_);
  connect(browse, &QPushButton::clicked, this, &DatabaseEdit::ChooseFile);
  for (QLineEdit* const field : {address_, table_}) {
    connect(field, &QLineEdit::textEdited, this, &PlaceEdit::edited);
  }
  connect(query_, &QPlainTextEdit::textChanged, this, &PlaceEdit::edited);
}

void DatabaseEdit::Show(const TDSInfo& info) {
  const QSignalBlocker quiet(this);
  DatabasePlace place;
  if (!info.DatasourceInfo.empty()) place = ParsePlace(info.DatasourceInfo);
  address_->setText(place.scheme.empty() ? QString() : ToQt(place.scheme + ':' + place.address));
  table_->setText(ToQt(place.table));
  query_->setPlainText(ToQt(place.query));
}

std::optional<QString> DatabaseEdit::Take(TDSInfo& info) const {
  try {
    DatabasePlace place = ParseDatabaseUrl(address_->text().trimmed().toStdString());
    place.query = query_->toPlainText().trimmed().toStdString();
    if (place.query.empty()) {
      place.table = table_->text().toStdString();
    } else {
      RequireReadingQuery(place.query);
    }
    info.DatasourceInfo = place.Text();
    return std::nullopt;
  } catch (const Error& error) {
    return ToQt(error.what());
  }
}

void DatabaseEdit::ChooseFile() {
  const QString file = QFileDialog::getOpenFileName(this, tr("Data Base"));
  if (file.isEmpty()) return;
  address_->setText("sqlite:" + file);
  emit edited();
}

}  // namespace tarnwick
