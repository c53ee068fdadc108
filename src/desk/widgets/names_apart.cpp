#include "desk/widgets/names_apart.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStylePainter>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <functional>
#include <utility>
#include <vector>

#include "graph/layout/legend_names.h"

namespace tarnwick {
namespace {

/// One of `count` names, which `name_at` gives, shortened to `room` pixels.
QString Shortened(const QString& name, int count, const std::function<QString(int)>& name_at,
                  const QFontMetrics& metrics, int room) {
  const auto fits = [&](const QString& text) { return metrics.horizontalAdvance(text) <= room; };
  if (fits(name)) return name;
  std::vector<QString> all;
  all.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) all.push_back(name_at(i));
  const QString shortened = LegendNames(std::move(all)).Shortened(name, fits);
  return shortened.isEmpty() ? metrics.elidedText(name, Qt::ElideMiddle, room) : shortened;
}

class NamesDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->rect.isEmpty() || !option->widget) return;  // its size is asked for
    const QStyle& style = *option->widget->style();
    const int margin = 2 * (style.pixelMetric(QStyle::PM_FocusFrameHMargin, option) + 1);
    const QRect room = style.subElementRect(QStyle::SE_ItemViewItemText, option, option->widget);
    const QAbstractItemModel& model = *index.model();
    option->text = Shortened(
        option->text, model.rowCount(index.parent()),
        [&](int row) { return index.siblingAtRow(row).data().toString(); }, option->fontMetrics,
        room.width() - margin);
  }
};

}  // namespace

void TellApart(QAbstractItemView& view) {
  view.setItemDelegate(new NamesDelegate(&view));
}

NameBox::NameBox(QWidget* parent) : QComboBox(parent) {}

bool NameBox::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()) return QComboBox::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), currentText(), this);
  return true;
}

void NameBox::paintEvent(QPaintEvent* event) {
  QStyleOptionComboBox option;
  initStyleOption(&option);
  const QRect field =
      style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
  const int margin = 2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option);
  const int icon = option.currentIcon.isNull() ? 0 : option.iconSize.width() + margin;
  const QString text = Shortened(
      option.currentText, count(), [this](int row) { return itemText(row); }, fontMetrics(),
      field.width() - margin - icon);
  if (text == option.currentText) return QComboBox::paintEvent(event);
  option.currentText = text;
  QStylePainter painter(this);
  painter.drawComplexControl(QStyle::CC_ComboBox, option);
  painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

NameHeader::NameHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setSectionsClickable(true);  // as the heads of tables are
}

void NameHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
  QHeaderView::initStyleOptionForIndex(option, section);
  const int margin = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, option, this);
  const auto name_at = [this](int column) {
    return model()->headerData(column, Qt::Horizontal).toString();
  };
  option->text =
      Shortened(name_at(section), count(), name_at, fontMetrics(), sectionSize(section) - margin);
}

}  // namespace tarnwick
