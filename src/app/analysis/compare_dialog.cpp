#include "app/analysis/compare_dialog.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "app/analysis/sample_picture.h"
#include "app/analysis/series_list.h"
#include "base/error.h"
#include "base/number_text.h"
#include "desk/document/document.h"
#include "desk/widgets/names_apart.h"
#include "desk/widgets/text.h"
#include "results/sample_report.h"

namespace tarnwick {
namespace {

constexpr int kDigits = 6;

QTableWidgetItem* NumberCell(double number) {
  auto* item =
      new QTableWidgetItem(IsUndefined(number) ? QString() : ToQt(GeneralText(number, kDigits)));
  item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return item;
}

}  // namespace

CompareDialog::CompareDialog(Document& document, QWidget* parent)
    : QDialog(parent),
      document_(document),
      first_(MakeSeriesList(document.Graph())),
      second_(MakeSeriesList(document.Graph())),
      table_(new QTableWidget),
      told_(new QLabel),
      picture_(new SamplePicture) {
  setObjectName("CompareDataSets");
  setWindowTitle(tr("Compare DataSets"));
  second_->setObjectName("With");
  second_->setAccessibleName(tr("DataSet that it is compared with"));
  if (second_->count() > 1) second_->setCurrentIndex(first_->currentIndex() == 0 ? 1 : 0);
  table_->setObjectName("Figures");
  table_->setAccessibleName(tr("Figures of both"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setHorizontalHeader(new NameHeader(table_));
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  told_->setObjectName("Told");
  told_->setWordWrap(true);
  told_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* choice = new QFormLayout;
  choice->addRow(tr("&DataSet"), first_);
  choice->addRow(tr("&With"), second_);
  auto* middle = new QHBoxLayout;
  middle->addWidget(table_, 1);
  middle->addWidget(picture_, 1);
  auto* copy = new QPushButton(tr("Co&py"));
  copy->setToolTip(tr("Copy table and tests as text"));
  auto* close = new QPushButton(tr("&Close"));
  close->setDefault(true);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(copy);
  buttons->addWidget(close);
  auto* column = new QVBoxLayout(this);
  column->addLayout(choice);
  column->addLayout(middle, 1);
  column->addWidget(told_);
  column->addLayout(buttons);
  connect(first_, &QComboBox::currentIndexChanged, this, &CompareDialog::Compare);
  connect(second_, &QComboBox::currentIndexChanged, this, &CompareDialog::Compare);
  connect(copy, &QPushButton::clicked, this, &CompareDialog::Copy);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  resize(760, 480);
  Compare();
}

void CompareDialog::Compare() {
  table_->clear();
  table_->setRowCount(0);
  table_->setColumnCount(2);
  table_->setHorizontalHeaderLabels({first_->currentText(), second_->currentText()});
  try {
    const TSeries& first = ChosenSeries(document_.Graph(), *first_);
    const TSeries& second = ChosenSeries(document_.Graph(), *second_);
    const SampleReport report = CompareSeries(first, second);
    table_->setRowCount(static_cast<int>(report.rows.size()));
    for (int row = 0; row < table_->rowCount(); ++row) {
      const SampleRow& figures = report.rows[static_cast<std::size_t>(row)];
      table_->setVerticalHeaderItem(row, new QTableWidgetItem(tr(figures.name)));
      table_->setItem(row, 0, NumberCell(figures.first));
      table_->setItem(row, 1, NumberCell(figures.second));
    }
    QStringList sentences;
    for (const std::string& sentence : report.sentences) sentences.append(ToQt(sentence));
    told_->setText(sentences.join('\n'));
    picture_->Show(first, second);
  } catch (const Error& error) {
    picture_->Clear();
    told_->setText(ToQt(error.what()));
  }
}

void CompareDialog::Copy() {
  QString text = '\t' + first_->currentText() + '\t' + second_->currentText() + '\n';
  for (int row = 0; row < table_->rowCount(); ++row)
    text += table_->verticalHeaderItem(row)->text() + '\t' + table_->item(row, 0)->text() + '\t' +
            table_->item(row, 1)->text() + '\n';
  QApplication::clipboard()->setText(text + told_->text() + '\n');
}

}  // namespace tarnwick
