#include "desk/fields/color_field.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>
#include <QWidgetAction>
#include <array>
#include <vector>

#include "desk/widgets/text.h"
#include "graph/paint/plot_pen.h"
#include "graph/palette.h"

namespace tarnwick {
namespace {

constexpr int kSwatch = 16;
constexpr std::size_t kColumns = 8;

Color ColorOf(const QColor& color) {
  return Color::FromRgb(color.red(), color.green(), color.blue());
}

QIcon Swatch(const QColor& color, const QWidget& on) {
  const double ratio = on.devicePixelRatioF();
  QPixmap picture(QSize(kSwatch, kSwatch) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(color);
  QPainter painter(&picture);
  painter.setPen(on.palette().color(QPalette::Mid));
  painter.drawRect(QRectF(0.5, 0.5, kSwatch - 1, kSwatch - 1));
  return picture;
}

/// The colours that DataSets get, the same made light, and from black to white.
std::vector<QColor> OfferedColors() {
  constexpr int kLighter = 170;
  std::vector<QColor> colors;
  for (std::size_t i = 0; i < kPaletteSize; ++i) colors.push_back(QtColor(PaletteColor(i)));
  for (std::size_t i = 0; i < kPaletteSize; ++i) {
    const QColor full = QtColor(PaletteColor(i));
    QColor light = full.lighter(kLighter);
    if (full.lightness() == 0) light = QColor(0x90, 0x90, 0x90);
    colors.push_back(light);
  }
  for (const int grey : {0, 0x40, 0x60, 0x80, 0xA0, 0xC0, 0xDC, 0xFF}) {
    colors.emplace_back(grey, grey, grey);
  }
  return colors;
}

QWidget* MakeGrid(QMenu& menu, const std::function<void(Color)>& chosen) {
  auto* grid = new QWidget(&menu);
  auto* places = new QGridLayout(grid);
  places->setSpacing(2);
  const std::vector<QColor> colors = OfferedColors();
  for (std::size_t i = 0; i < colors.size(); ++i) {
    auto* swatch = new QToolButton(grid);
    swatch->setAutoRaise(true);
    swatch->setIcon(Swatch(colors[i], *grid));
    swatch->setToolTip(colors[i].name());
    swatch->setAccessibleName(colors[i].name());
    swatch->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(swatch, &QToolButton::clicked, &menu,
                     [&menu, chosen, color = ColorOf(colors[i])] {
                       menu.close();
                       chosen(color);
                     });
    places->addWidget(swatch, static_cast<int>(i / kColumns), static_cast<int>(i % kColumns));
  }
  // Where the keyboard goes when it reaches the colours.
  grid->setFocusPolicy(Qt::StrongFocus);
  grid->setFocusProxy(places->itemAt(0)->widget());
  return grid;
}

void FillMenu(QMenu& menu, QToolButton& button, const std::function<Color()>& present,
              const std::function<void(Color)>& chosen) {
  auto* grid = new QWidgetAction(&menu);
  grid->setDefaultWidget(MakeGrid(menu, chosen));
  menu.addAction(grid);
  QObject::connect(menu.addAction(QObject::tr("&Other…")), &QAction::triggered, &button,
                   [&button, present, chosen] {
                     const QColor color = QColorDialog::getColor(
                         QtColor(present()), button.window(), button.accessibleName());
                     if (color.isValid()) chosen(ColorOf(color));
                   });
}

}  // namespace

void OfferColors(QToolButton& button, const std::function<Color()>& present,
                 const std::function<void(Color)>& chosen) {
  auto* menu = new QMenu(&button);
  button.setMenu(menu);
  button.setPopupMode(QToolButton::InstantPopup);
  button.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button.setFocusPolicy(Qt::StrongFocus);
  // A page has many of these; each menu is made when it is first wanted.
  QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, &button, present, chosen] {
    if (menu->isEmpty()) FillMenu(*menu, button, present, chosen);
  });
}

void ShowColor(QToolButton& button, const std::optional<Color>& color) {
  button.setText(color ? QtColor(*color).name() : QObject::tr("various"));
  button.setIcon(color ? Swatch(QtColor(*color), button) : QIcon());
}

ColorField::ColorField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), button_(new QToolButton(this)) {
  OfferColors(
      *button_, [this] { return color_; }, [this](Color color) { Choose(color); });
  button_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  AddControl(button_);
}

void ColorField::Choose(Color color) {
  color_ = color;
  ShowColor(*button_, color);
  Take(color);
}

void ColorField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  if (value) color_ = std::get<Color>(*value);
  ShowColor(*button_, value ? std::optional(color_) : std::nullopt);
}

}  // namespace tarnwick
