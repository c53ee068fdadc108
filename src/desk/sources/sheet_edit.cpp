#include "desk/sources/sheet_edit.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include "base/error.h"
#include "data/import/source_place.h"
#include "desk/widgets/text.h"
#include "desk/work/latest_work.h"
#include "sources/workbook/sheet_part.h"
#include "sources/workbook/workbook_source.h"

namespace tarnwick {
namespace {

constexpr int kSheetLetters = 24;

/// Where names and the first row stand is said of one sheet.
void ForgetRows(TDSInfo& info) {
  const TDSInfo fresh;
  for (const auto member :
       {&TDSInfo::FileHasHeaders, &TDSInfo::NamesLine, &TDSInfo::UnitsLine, &TDSInfo::TableLines}) {
    info.*member = fresh.*member;
  }
}

}  // namespace

SheetEdit::SheetEdit(QWidget* parent)
    : PlaceEdit(parent),
      file_(new QLabel(this)),
      sheet_(new QComboBox(this)),
      range_(new QLineEdit(this)),
      names_(new LatestWork(this)) {
  file_->setObjectName("WorkbookFile");
  file_->setWordWrap(true);
  file_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  sheet_->setObjectName("WorkbookSheet");
  sheet_->setEditable(true);
  sheet_->setInsertPolicy(QComboBox::NoInsert);
  sheet_->setMinimumContentsLength(kSheetLetters);
  sheet_->lineEdit()->setPlaceholderText(tr("the one with the most numbers"));
  range_->setObjectName("WorkbookRange");
  range_->setPlaceholderText(tr("all cells; or A1:C9, A:C, 1:9"));
  auto* const form = new QFormLayout(this);
  form->setContentsMargins(0, 0, 0, 0);
  form->addRow(file_);
  form->addRow(tr("&Sheet:"), sheet_);
  form->addRow(tr("Ran&ge:"), range_);
  setFocusProxy(sheet_);
  connect(sheet_, &QComboBox::editTextChanged, this, &PlaceEdit::edited);
  connect(range_, &QLineEdit::textEdited, this, &PlaceEdit::edited);
}

void SheetEdit::Show(const TDSInfo& info) {
  const QSignalBlocker quiet(this);
  const SheetPart part = ParseSheetPart(info.TablePart);
  file_->setText(PathText(SourcePlace(info)));
  sheet_->clear();
  sheet_->setEditText(ToQt(part.sheet));
  range_->setText(ToQt(part.range));
  AskForSheets(info);
}

void SheetEdit::AskForSheets(const TDSInfo& info) {
  names_->Begin(
      [this, file = SourcePlace(info).string()](Progress& progress) -> LatestWork::Answer {
        QStringList names;
        try {
          for (const std::string& name : SheetsOf(file, progress)) names << ToQt(name);
        } catch (const Error&) {
          // What keeps the file from being read is told where its rows are shown; names can be typed.
        }
        return [this, names] {
          const QSignalBlocker quiet(this);
          const QString typed = sheet_->currentText();
          sheet_->clear();
          sheet_->addItems(names);
          sheet_->setEditText(typed);
        };
      });
}

std::optional<QString> SheetEdit::Take(TDSInfo& info) const {
  try {
    const SheetPart part =
        TypedSheetPart(sheet_->currentText().toStdString(), range_->text().toStdString());
    if (part.sheet != ParseSheetPart(info.TablePart).sheet) ForgetRows(info);
    info.TablePart = part.Text();
    return std::nullopt;
  } catch (const Error& error) {
    return ToQt(error.what());
  }
}

}  // namespace tarnwick
