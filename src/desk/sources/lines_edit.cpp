#include "desk/sources/lines_edit.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>

#include "base/error.h"
#include "data/pseudo_columns.h"
#include "desk/widgets/text.h"
#include "sources/lines/line_place.h"
#include "sources/lines/line_rows.h"

namespace tarnwick {
namespace {

using Kind = LinePlace::Kind;

/// A way that lines come, and what is asked about it.
struct Way {
  Kind kind;
  const char* caption;
  const char* address;
  const char* hint;
  const char* number;  ///< null: none is asked
  int usual;
  int most;
};
constexpr Way kWays[] = {
    {Kind::Pipe, QT_TRANSLATE_NOOP("LinesEdit", "Named pipe"), "&File:", "/run/sensor", nullptr, 0,
     0},
    {Kind::Tcp, QT_TRANSLATE_NOOP("LinesEdit", "Server that is called (TCP)"),
     "&Host:", "sensor.local", "&Port:", 5000, 65535},
    {Kind::Listen, QT_TRANSLATE_NOOP("LinesEdit", "Port of this machine (TCP)"),
     "&Address:", "127.0.0.1: this machine alone", "&Port:", 5000, 65535},
    {Kind::Serial, QT_TRANSLATE_NOOP("LinesEdit", "Serial port"), "&Device:", "/dev/ttyUSB0",
     "&Baud:", static_cast<int>(kUsualBaud), 4'000'000},
};

}  // namespace

LinesEdit::LinesEdit(QWidget* parent)
    : PlaceEdit(parent),
      way_(new QComboBox(this)),
      address_caption_(new QLabel(this)),
      address_(new QLineEdit(this)),
      number_caption_(new QLabel(this)),
      number_(new QSpinBox(this)),
      x_(new QComboBox(this)) {
  way_->setObjectName("LinesWay");
  address_->setObjectName("LinesAddress");
  number_->setObjectName("LinesNumber");
  x_->setObjectName("LinesX");
  for (const Way& way : kWays) way_->addItem(tr(way.caption));
  x_->addItem(tr("the first number of a line"), ToQt(std::string(kLineX)));
  x_->addItem(tr("the number of the line"), ToQt(std::string(kRowNumberName)));
  x_->addItem(tr("the clock"), ToQt(std::string(kLineClock)));
  address_caption_->setBuddy(address_);
  number_caption_->setBuddy(number_);
  auto* const form = new QFormLayout(this);
  form->setContentsMargins(0, 0, 0, 0);
  form->addRow(tr("&Lines come by:"), way_);
  form->addRow(address_caption_, address_);
  form->addRow(number_caption_, number_);
  form->addRow(tr("&X is:"), x_);
  setFocusProxy(way_);  // the first: TAB comes here from outside
  FollowWay();
  connect(way_, &QComboBox::currentIndexChanged, this, &LinesEdit::FollowWay);
  connect(way_, &QComboBox::currentIndexChanged, this, &PlaceEdit::edited);
  connect(x_, &QComboBox::currentIndexChanged, this, &PlaceEdit::edited);
  connect(address_, &QLineEdit::textEdited, this, &PlaceEdit::edited);
  connect(number_, &QSpinBox::valueChanged, this, &PlaceEdit::edited);
}

void LinesEdit::FollowWay() {
  const Way& way = kWays[static_cast<std::size_t>(way_->currentIndex())];
  const QSignalBlocker quiet(number_);
  address_caption_->setText(tr(way.address));
  address_->setPlaceholderText(tr(way.hint));
  number_caption_->setVisible(way.number != nullptr);
  number_->setVisible(way.number != nullptr);
  if (way.number == nullptr) return;
  number_caption_->setText(tr(way.number));
  number_->setRange(1, way.most);
  number_->setValue(way.usual);
}

void LinesEdit::Show(const TDSInfo& info) {
  const QSignalBlocker quiet(this);
  if (info.DatasourceInfo.empty()) return;
  const LinePlace place = ParseLinePlace(info.DatasourceInfo);
  way_->setCurrentIndex(static_cast<int>(place.kind));
  address_->setText(ToQt(place.address));
  number_->setValue(place.kind == Kind::Serial ? static_cast<int>(place.baud) : place.port);
  x_->setCurrentIndex(std::max(x_->findData(ToQt(info.XDataColumn)), 0));
}

std::optional<QString> LinesEdit::Take(TDSInfo& info) const {
  LinePlace place;
  place.kind = kWays[static_cast<std::size_t>(way_->currentIndex())].kind;
  place.address = address_->text().trimmed().toStdString();
  if (place.kind == Kind::Listen && place.address.empty()) place.address = kOwnMachine;
  if (place.kind == Kind::Serial) {
    place.baud = static_cast<std::uint32_t>(number_->value());
  } else {
    place.port = static_cast<std::uint16_t>(number_->value());
  }
  if (place.address.empty()) return tr("Where the lines come from is not said yet");
  try {
    info.DatasourceInfo = ParseLinePlace(place.Text()).Text();
    info.XDataColumn = x_->currentData().toString().toStdString();
    return std::nullopt;
  } catch (const Error& error) {
    return ToQt(error.what());
  }
}

}  // namespace tarnwick
