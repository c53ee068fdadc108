#include "app/fit/parameter_table.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <cmath>

#include "app/fit/value_slider.h"
#include "base/number_text.h"
#include "desk/widgets/check_list.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

/// The columns, in order.
enum Column {
  kName,
  kValue,
  kUnits,
  kVary,
  kLow,
  kHigh,
  kTie,
  kStartDev,
  kFinalDev,
  kPrinted,
  kDescription,
  kSlider
};

bool HoldsNumber(int column) {
  return column == kValue || column == kStartDev || column == kFinalDev;
}

/// Empty means that there is no bound.
bool HoldsBound(int column) {
  return column == kLow || column == kHigh;
}

bool IsCheck(int column) {
  return column == kVary || column == kPrinted;
}

std::optional<double> NumberIn(const QTableWidgetItem* item) {
  return ParseNumber(item->text().toStdString());
}

std::optional<double> BoundIn(const QTableWidgetItem* item, double none) {
  if (item->text().trimmed().isEmpty()) return none;
  const std::optional<double> bound = NumberIn(item);
  return bound && !std::isnan(*bound) ? bound : std::nullopt;
}

/// True for a cell that holds what its column asks for.
bool IsGood(const QTableWidgetItem* item) {
  if (HoldsBound(item->column())) return BoundIn(item, 0).has_value();
  return !HoldsNumber(item->column()) || NumberIn(item).has_value();
}

QString BoundText(double bound) {
  return std::isfinite(bound) ? ToQt(ShortestText(bound)) : QString();
}

}  // namespace

ParameterTable::ParameterTable(QWidget* parent) : QTableWidget(parent) {
  setObjectName("ParameterTable");
  setAccessibleName(tr("Parameters"));
  ShowCheckBoxes(*this);
  const QStringList header = {tr("Name"),
                              tr("Value"),
                              tr("Units:"),
                              tr("Vary"),
                              tr("Low"),
                              tr("High"),
                              tr("Tied to"),
                              tr("Starting Deviation:"),
                              tr("Final Deviation:"),
                              tr("Printed"),
                              tr("Description"),
                              tr("Drag")};
  setColumnCount(static_cast<int>(header.size()));
  setHorizontalHeaderLabels(header);
  horizontalHeaderItem(kLow)->setToolTip(tr("A fit goes no lower; empty for no bound"));
  horizontalHeaderItem(kHigh)->setToolTip(tr("A fit goes no higher; empty for no bound"));
  horizontalHeaderItem(kTie)->setToolTip(
      tr("An expression of other parameters that gives the value; empty for none"));
  horizontalHeaderItem(kSlider)->setToolTip(
      tr("Moves the value between its bounds, or about what it is, and the curve with it"));
  horizontalHeader()->moveSection(kSlider, kUnits);  // beside the value
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setMinimumSectionSize(52);
  verticalHeader()->hide();
  setWordWrap(false);
  setTabKeyNavigation(false);  // the tab key leaves the table; in a cell it goes on to the next
  setSelectionBehavior(QAbstractItemView::SelectItems);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::AllEditTriggers);
  connect(this, &QTableWidget::itemChanged, this, &ParameterTable::CheckCell);
}

void ParameterTable::SetParameters(const std::vector<ParameterSettings>& parameters) {
  {
    const QSignalBlocker quiet(this);
    setRowCount(static_cast<int>(parameters.size()));
    int row = 0;
    for (const ParameterSettings& one : parameters) PutRow(row++, one);
  }
  emit edited();
}

void ParameterTable::Add(const ParameterSettings& parameter) {
  const int row = rowCount();
  {
    const QSignalBlocker quiet(this);
    insertRow(row);
    PutRow(row, parameter);
  }
  setCurrentCell(row, kName);
  emit edited();
}

void ParameterTable::DeleteCurrent() {
  if (currentRow() < 0) return;
  removeRow(currentRow());
  emit edited();
}

void ParameterTable::Delete(const std::string& name) {
  for (QTableWidgetItem* const found : findItems(ToQt(name), Qt::MatchFixedString)) {
    if (found->column() != kName) continue;
    removeRow(found->row());
    return emit edited();
  }
}

void ParameterTable::PutRow(int row, const ParameterSettings& parameter) {
  const auto put = [&](Column column, const QString& text, Qt::Alignment alignment) {
    auto* item = new QTableWidgetItem(text);
    item->setTextAlignment(alignment | Qt::AlignVCenter);
    setItem(row, column, item);
  };
  const auto check = [&](Column column, bool on) {
    auto* item = new QTableWidgetItem;
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
    setItem(row, column, item);
  };
  put(kName, ToQt(parameter.Name), Qt::AlignLeft);
  put(kValue, ToQt(ShortestText(parameter.Value)), Qt::AlignRight);
  put(kUnits, ToQt(parameter.Units), Qt::AlignLeft);
  check(kVary, parameter.Vary);
  put(kLow, BoundText(parameter.Low), Qt::AlignRight);
  put(kHigh, BoundText(parameter.High), Qt::AlignRight);
  put(kTie, ToQt(parameter.Tie), Qt::AlignLeft);
  put(kStartDev, ToQt(ShortestText(parameter.StartDev)), Qt::AlignRight);
  put(kFinalDev, ToQt(ShortestText(parameter.FinalDev)), Qt::AlignRight);
  check(kPrinted, parameter.Printed);
  put(kDescription, ToQt(parameter.Description), Qt::AlignLeft);
  AddSlider(row);
}

void ParameterTable::AddSlider(int row) {
  auto* place = new QTableWidgetItem;  // which the row is known by when others were deleted
  place->setFlags(Qt::NoItemFlags);
  setItem(row, kSlider, place);
  auto* slider = new ValueSlider(this);
  slider->setAccessibleName(tr("Value of %1").arg(item(row, kName)->text()));
  setCellWidget(row, kSlider, slider);
  if (const auto parameter = ParameterIn(row)) slider->Follow(*parameter);
  connect(slider, &ValueSlider::dragged, this, [this, place](double value) {
    item(place->row(), kValue)->setText(ToQt(ShortestText(value)));
  });
}

void ParameterTable::CheckCell(QTableWidgetItem* item) {
  if (HoldsNumber(item->column()) || HoldsBound(item->column())) {
    const QSignalBlocker quiet(this);
    const bool good = IsGood(item);
    item->setBackground(good ? QBrush() : QBrush(WrongColor()));
    item->setForeground(good ? QBrush() : QBrush(Qt::black));
    item->setToolTip(good ? QString() : tr("This is no number."));
  } else if (!IsCheck(item->column()) && item->text() != item->text().trimmed()) {
    const QSignalBlocker quiet(this);
    item->setText(item->text().trimmed());
  }
  auto* slider = qobject_cast<ValueSlider*>(cellWidget(item->row(), kSlider));
  if (const auto parameter = ParameterIn(item->row()); slider && parameter)
    slider->Follow(*parameter);
  emit edited();
}

std::optional<ParameterSettings> ParameterTable::ParameterIn(int row) const {
  const auto value = NumberIn(item(row, kValue));
  const auto start = NumberIn(item(row, kStartDev));
  const auto final_dev = NumberIn(item(row, kFinalDev));
  ParameterSettings one;
  const auto low = BoundIn(item(row, kLow), one.Low);
  const auto high = BoundIn(item(row, kHigh), one.High);
  if (!value || !start || !final_dev || !low || !high) return std::nullopt;
  one.Low = *low;
  one.High = *high;
  one.Tie = item(row, kTie)->text().toStdString();
  one.Name = item(row, kName)->text().toStdString();
  one.Value = *value;
  one.StartDev = *start;
  one.FinalDev = *final_dev;
  one.Vary = one.Tie.empty() && item(row, kVary)->checkState() == Qt::Checked;
  one.Printed = item(row, kPrinted)->checkState() == Qt::Checked;
  one.Description = item(row, kDescription)->text().toStdString();
  one.Units = item(row, kUnits)->text().toStdString();
  return one;
}

QString ParameterTable::Trouble() const {
  for (int row = 0; row < rowCount(); ++row) {
    for (const Column column : {kValue, kLow, kHigh, kStartDev, kFinalDev}) {
      if (IsGood(item(row, column))) continue;
      return tr("%1 of \"%2\" is no number.")
          .arg(horizontalHeaderItem(column)->text().remove(':'), item(row, kName)->text());
    }
  }
  return {};
}

std::optional<std::vector<ParameterSettings>> ParameterTable::Parameters() const {
  std::vector<ParameterSettings> parameters;
  for (int row = 0; row < rowCount(); ++row) {
    std::optional<ParameterSettings> one = ParameterIn(row);
    if (!one) return std::nullopt;
    parameters.push_back(*std::move(one));
  }
  return parameters;
}

}  // namespace tarnwick
