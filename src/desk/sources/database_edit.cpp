#include "desk/sources/database_edit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/import/whole_data.h"
#include "data/packed/unpack.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "desk/work/latest_work.h"
#include "sources/database/database_connection.h"
#include "sources/database/database_supplier.h"
#include "sources/database/key_store.h"
#include "sources/database/session_passwords.h"

namespace tarnwick {
namespace {

constexpr int kQueryLines = 4;
constexpr int kPatienceMs = 15'000;
constexpr std::size_t kMostColumns = 8;  // in a sentence

}  // namespace

/// What a data base said.
struct DatabaseEdit::Answer {
  std::vector<std::string> tables;
  std::string text;
  bool is_wrong = false;
};

DatabaseEdit::DatabaseEdit(QWidget* parent)
    : PlaceEdit(parent),
      address_(new QLineEdit(this)),
      browse_(new QPushButton(tr("&File..."), this)),
      password_(new QLineEdit(this)),
      keep_(new QPushButton(tr("Kee&p"), this)),
      table_(new QComboBox(this)),
      query_(new QPlainTextEdit(this)),
      thinned_(new QCheckBox(tr("T&hinned by the data base"), this)),
      test_(new QPushButton(tr("&Test"), this)),
      told_(new QLabel(this)),
      asking_(new LatestWork(this)) {
  MakeFields();
  MakeLayout();
  Connect();
  patience_.setSingleShot(true);
  patience_.setInterval(kPatienceMs);
}

void DatabaseEdit::MakeFields() {
  address_->setObjectName("DatabaseAddress");
  address_->setPlaceholderText("sqlite:FILE, postgresql://…, mysql://…, odbc:NAME");
  browse_->setAutoDefault(false);
  browse_->setToolTip(tr("Choose the file of an SQLite data base"));
  password_->setObjectName("DatabasePassword");
  password_->setEchoMode(QLineEdit::Password);
  keep_->setObjectName("DatabaseKeep");
  keep_->setAutoDefault(false);
  QSizePolicy room = keep_->sizePolicy();
  room.setRetainSizeWhenHidden(true);
  keep_->setSizePolicy(room);
  keep_->setToolTip(tr(
      "Puts the password into the key store of the desktop, where it is looked for when the server "
      "wants one; with an empty field, takes it out again"));
  table_->setObjectName("DatabaseTables");
  table_->setEditable(true);
  table_->setInsertPolicy(QComboBox::NoInsert);
  table_->lineEdit()->setObjectName("DatabaseTable");
  table_->lineEdit()->setPlaceholderText(tr("its first table with numbers"));
  query_->setObjectName("DatabaseQuery");
  query_->setPlaceholderText(tr("SELECT … instead of a table"));
  query_->setTabChangesFocus(true);
  query_->setFixedHeight(kQueryLines * fontMetrics().lineSpacing() + 2 * query_->frameWidth() + 8);
  thinned_->setObjectName("DatabaseThinned");
  thinned_->setToolTip(tr(
      "The data base gives the first, last, highest and lowest row of every column of a view, and "
      "each zoom asks for its own: for tables of many millions of rows"));
  test_->setObjectName("DatabaseTest");
  test_->setAutoDefault(false);
  test_->setToolTip(tr("Connects, lists the tables, and tries what is to be read"));
  told_->setObjectName("DatabaseTold");
  told_->setWordWrap(true);
  told_->setAlignment(Qt::AlignVCenter);
  told_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  told_->setMinimumHeight(2 * fontMetrics().lineSpacing());
}

void DatabaseEdit::MakeLayout() {
  auto* const line = new QHBoxLayout;
  line->addWidget(address_, 1);
  line->addWidget(browse_);
  auto* const password = new QHBoxLayout;
  password->addWidget(password_, 1);
  password->addWidget(keep_);
  auto* const test = new QHBoxLayout;
  test->addWidget(test_, 0, Qt::AlignTop);
  test->addWidget(told_, 1, Qt::AlignTop);
  auto* const form = new QFormLayout(this);
  form->setContentsMargins(0, 0, 0, 0);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  auto* const caption = new QLabel(tr("&Data base:"), this);
  caption->setBuddy(address_);
  form->addRow(caption, line);
  auto* const wanted = new QLabel(tr("Pass&word:"), this);
  wanted->setBuddy(password_);
  form->addRow(wanted, password);
  form->addRow(tr("Ta&ble:"), table_);
  form->addRow(tr("&Query:"), query_);
  form->addRow(QString(), thinned_);
  form->addRow(QString(), test);
  setFocusProxy(address_);
}

void DatabaseEdit::Connect() {
  connect(browse_, &QPushButton::clicked, this, &DatabaseEdit::ChooseFile);
  connect(address_, &QLineEdit::textEdited, this, [this] {
    AddressChanged();
    emit edited();
  });
  connect(address_, &QLineEdit::editingFinished, this, [this] {
    if (address_->isModified()) Ask();
    address_->setModified(false);
  });
  connect(password_, &QLineEdit::textEdited, this, &DatabaseEdit::PasswordTyped);
  connect(keep_, &QPushButton::clicked, this, &DatabaseEdit::KeepOrForget);
  connect(table_, &QComboBox::editTextChanged, this, &PlaceEdit::edited);
  connect(query_, &QPlainTextEdit::textChanged, this, &DatabaseEdit::QueryChanged);
  connect(thinned_, &QCheckBox::toggled, this, &PlaceEdit::edited);
  connect(test_, &QPushButton::clicked, this, &DatabaseEdit::Ask);
  connect(&patience_, &QTimer::timeout, this, [this] {
    asking_->GiveUp();
    Tell(tr("The data base did not answer within %1 seconds.").arg(kPatienceMs / 1000), true);
  });
}

void DatabaseEdit::Show(const TDSInfo& info) {
  const QSignalBlocker quiet(this);
  DatabasePlace place;
  if (!info.DatasourceInfo.empty()) place = PlaceOf(info);
  address_->setText(place.scheme.empty() ? QString() : ToQt(place.scheme + ':' + place.address));
  table_->clear();
  table_->setEditText(ToQt(place.table));
  query_->setPlainText(ToQt(place.query));
  thinned_->setChecked(info.ThinnedAtSource);
  AddressChanged();
}

DatabasePlace DatabaseEdit::Place() const {
  DatabasePlace place = ParseDatabaseUrl(address_->text().trimmed().toStdString());
  place.query = query_->toPlainText().trimmed().toStdString();
  if (place.query.empty()) {
    place.table = table_->currentText().toStdString();
  } else {
    RequireReadingQuery(place.query);
  }
  return place;
}

std::optional<QString> DatabaseEdit::Take(TDSInfo& info) const {
  try {
    const DatabasePlace place = Place();
    info.DatasourceInfo = place.Text();
    info.ThinnedAtSource = thinned_->isChecked();
    if (info.ThinnedAtSource) TakeAllRows(info);
    return std::nullopt;
  } catch (const Error& error) {
    return ToQt(error.what());
  }
}

void DatabaseEdit::ChooseFile() {
  const QString file = QFileDialog::getOpenFileName(
      this, tr("Data Base"), {}, tr("SQLite data bases (*.db *.sqlite *.sqlite3);;All files (*)"));
  if (file.isEmpty()) return;
  address_->setText("sqlite:" + file);
  AddressChanged();
  emit edited();
  Ask();
}

/// Only servers ask for a password. The row stays where it is: nothing moves under the mouse while one types.
void DatabaseEdit::AddressChanged() {
  asking_->GiveUp();
  patience_.stop();
  const QString address = address_->text().trimmed();
  const bool server = NamesServer(address.toStdString());
  password_->setEnabled(server);
  password_->setPlaceholderText(server ? tr("kept until the program ends, never in a file")
                                       : tr("asked by servers only"));
  if (server && !has_key_store_) has_key_store_ = HasKeyStore();
  keep_->setVisible(server && has_key_store_.value_or(false));
  password_->clear();
  Tell({}, false);
}

void DatabaseEdit::PasswordTyped() {
  try {
    const std::string server = ParseDatabaseUrl(address_->text().trimmed().toStdString()).Server();
    RememberPassword(server, password_->text());
  } catch (const Error& error) {
    Tell(ToQt(error.what()), true);
  }
}

void DatabaseEdit::KeepOrForget() {
  try {
    const std::string server = ParseDatabaseUrl(address_->text().trimmed().toStdString()).Server();
    if (password_->text().isEmpty()) {
      ForgetKeptPassword(server);
      Tell(tr("The key store keeps no password for this server."), false);
    } else {
      KeepPassword(server, password_->text());
      Tell(tr("The key store keeps the password for this server."), false);
    }
  } catch (const Error& error) {
    Tell(ToQt(error.what()), true);
  }
}

void DatabaseEdit::QueryChanged() {
  const std::string query = query_->toPlainText().trimmed().toStdString();
  table_->setEnabled(query.empty());
  QString why;
  if (!query.empty()) {
    try {
      RequireReadingQuery(query);
    } catch (const Error& error) {
      why = ToQt(error.what());
    }
  }
  Tell(why, true);
  emit edited();
}

void DatabaseEdit::Tell(const QString& text, bool is_wrong) {
  QPalette palette = this->palette();
  if (is_wrong) palette.setColor(QPalette::WindowText, WrongTextColor());
  told_->setPalette(palette);
  told_->setText(text);
}

void DatabaseEdit::Ask() {
  DatabasePlace place;
  try {
    place = Place();
  } catch (const Error& error) {
    return Tell(ToQt(error.what()), true);
  }
  Tell(tr("asking…"), false);
  patience_.start();
  asking_->Begin([this, place](Progress& progress) -> LatestWork::Answer {
    Answer answer;
    try {
      answer.tables = DatabaseConnection(place).Tables();
      answer.text =
          "Connected: " + Counted(static_cast<std::int64_t>(answer.tables.size()), "table");
      if (!place.table.empty() || !place.query.empty()) {
        TDBSupplier supplier(place, progress);
        answer.text += place.query.empty() ? "; the table has the columns " : "; the query gives ";
        answer.text += Listed(supplier.ColumnNames(), kMostColumns);
      }
    } catch (const UnpackingCancelled&) {
      return [] {};
    } catch (const Error& error) {
      answer.text = error.what();
      answer.is_wrong = true;
    }
    return [this, answer] { Take(answer); };
  });
}

void DatabaseEdit::Take(const Answer& answer) {
  patience_.stop();
  {
    const QSignalBlocker quiet(table_);
    const QString typed = table_->currentText();
    table_->clear();
    for (const std::string& table : answer.tables) table_->addItem(ToQt(table));
    table_->setEditText(typed);
  }
  Tell(ToQt(answer.text) + '.', answer.is_wrong);
}

}  // namespace tarnwick
