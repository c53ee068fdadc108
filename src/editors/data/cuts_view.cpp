#include "editors/data/cuts_view.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kMargin = 6;                     // left of the first character
constexpr int kReach = 4;                      // pixels beside a mark that belong to it
constexpr int kFarOutside = 24;                // pixels beyond which a mark is let go of
constexpr std::size_t kMostCharacters = 2000;  // of a line are shown
constexpr int kNumbered = 10;  // characters from one number of the ruler to the next

std::vector<char32_t> CharactersOf(const std::string& line) {
  const QList<uint> characters = ToQt(line).toUcs4();
  const auto count = std::min<qsizetype>(characters.size(), kMostCharacters);
  return {characters.begin(), characters.begin() + count};
}

}  // namespace

std::vector<std::int32_t> CutsInGaps(const std::vector<PreviewedLine>& lines) {
  std::vector<bool> used;  // by some row
  for (const PreviewedLine& line : lines) {
    if (line.role != LineRole::Row) continue;
    const std::vector<char32_t> characters = CharactersOf(line.text);
    used.resize(std::max(used.size(), characters.size()));
    for (std::size_t i = 0; i < characters.size(); ++i) used[i] = used[i] || characters[i] > U' ';
  }
  std::vector<std::int32_t> cuts = {0};
  const auto last = std::ranges::find(used.rbegin(), used.rend(), true).base();
  bool begun = false;
  for (auto at = used.begin(); at != last; ++at) {
    if (begun && !*at) cuts.push_back(static_cast<std::int32_t>(at - used.begin()));
    begun = *at;
  }
  return cuts;
}

CutsView::CutsView(QWidget* parent) : QAbstractScrollArea(parent) {
  setObjectName("Cuts");
  setAccessibleName(tr("First lines of the source, with the columns' first characters"));
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  viewport()->setMouseTracking(true);
  viewport()->setToolTip(
      tr("A click begins a column there. Drag a mark to move it; drag it out of the lines, or "
         "double-click it, to take it away. The field below holds the same as numbers."));
}

QSize CutsView::sizeHint() const {
  return {CellWidth() * 60, RulerHeight() + LineHeight() * 8};
}

void CutsView::ShowLines(const std::vector<PreviewedLine>& lines, std::vector<std::int32_t> cuts) {
  if (held_) return;  // a mark that is dropped is shown anew
  lines_.clear();
  longest_ = 0;
  for (const PreviewedLine& line : lines) {
    Line shown{CharactersOf(line.text), IsCut(line.role)};
    longest_ = std::max(longest_, shown.characters.size());
    lines_.push_back(std::move(shown));
  }
  cuts_ = std::move(cuts);
  SettleBars();
  viewport()->update();
}

int CutsView::CellWidth() const {
  return std::max(fontMetrics().horizontalAdvance('0'), 1);
}

int CutsView::LineHeight() const {
  return fontMetrics().height() + 2;
}

int CutsView::PixelOf(std::int32_t character) const {
  return kMargin + character * CellWidth() - horizontalScrollBar()->value();
}

std::int32_t CutsView::CharacterAt(int x) const {
  const double cells =
      static_cast<double>(x - kMargin + horizontalScrollBar()->value()) / CellWidth();
  return std::clamp(static_cast<std::int32_t>(std::lround(cells)), 0,
                    static_cast<std::int32_t>(std::max<std::size_t>(longest_, 1) - 1));
}

std::optional<std::size_t> CutsView::CutAt(int x) const {
  for (std::size_t i = 0; i < cuts_.size(); ++i) {
    if (std::abs(PixelOf(cuts_[i]) - x) <= kReach) return i;
  }
  return std::nullopt;
}

void CutsView::SettleBars() {
  const int width = 2 * kMargin + static_cast<int>(longest_) * CellWidth();
  horizontalScrollBar()->setRange(0, std::max(width - viewport()->width(), 0));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(CellWidth());
  const int height = RulerHeight() + static_cast<int>(lines_.size()) * LineHeight();
  verticalScrollBar()->setRange(0, std::max(height - viewport()->height(), 0));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(LineHeight());
}

void CutsView::resizeEvent(QResizeEvent*) {
  SettleBars();
}

void CutsView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange) SettleBars();
}

void CutsView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.setFont(font());
  painter.fillRect(viewport()->rect(), palette().color(QPalette::Base));
  PaintLines(painter);
  PaintRuler(painter);
  PaintCuts(painter);
}

void CutsView::PaintLines(QPainter& painter) const {
  // Every other column is shaded.
  for (std::size_t i = 1; i < cuts_.size(); i += 2) {
    const int end = i + 1 < cuts_.size() ? PixelOf(cuts_[i + 1]) : viewport()->width();
    const int begin = PixelOf(cuts_[i]);
    painter.fillRect(begin, 0, end - begin, viewport()->height(),
                     palette().color(QPalette::AlternateBase));
  }
  const int top = RulerHeight() - verticalScrollBar()->value();
  const std::int32_t first = std::max((horizontalScrollBar()->value() - kMargin) / CellWidth(), 0);
  for (std::size_t row = 0; row < lines_.size(); ++row) {
    const Line& line = lines_[row];
    const int y = top + static_cast<int>(row) * LineHeight();
    if (y + LineHeight() < 0 || y > viewport()->height()) continue;
    painter.setPen(
        palette().color(line.is_cut ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    for (auto at = static_cast<std::size_t>(first); at < line.characters.size(); ++at) {
      const int x = PixelOf(static_cast<std::int32_t>(at));
      if (x > viewport()->width()) break;
      const char32_t character = line.characters[at];
      if (character == U' ') continue;
      const char32_t shown = character < U' ' ? U'→' : character;  // tabs
      painter.drawText(QRect(x, y, CellWidth(), LineHeight()), Qt::AlignCenter | Qt::TextDontClip,
                       QString::fromUcs4(&shown, 1));
    }
  }
}

void CutsView::PaintRuler(QPainter& painter) const {
  const int height = RulerHeight();
  painter.fillRect(0, 0, viewport()->width(), height, palette().color(QPalette::Window));
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawLine(0, height - 1, viewport()->width(), height - 1);
  for (int character = kNumbered; character <= static_cast<int>(longest_); character += kNumbered) {
    const QRect cells(PixelOf(character - kNumbered), 0, kNumbered * CellWidth(), height - 2);
    painter.drawText(cells, Qt::AlignRight | Qt::AlignVCenter, QString::number(character));
  }
}

void CutsView::PaintCuts(QPainter& painter) const {
  painter.setRenderHint(QPainter::Antialiasing);
  for (std::size_t i = 0; i < cuts_.size(); ++i) {
    if (held_ && held_->cut == i && held_->outside) continue;
    const double x = PixelOf(cuts_[i]) + 0.5;
    const QColor color = palette().color(QPalette::Highlight);
    painter.setPen(QPen(color, held_ && held_->cut == i ? 2 : 1));
    painter.drawLine(QPointF(x, 0), QPointF(x, viewport()->height()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double base = RulerHeight() - 1;
    const QPointF handle[] = {{x - kReach, base - 7}, {x + kReach, base - 7}, {x, base}};
    painter.drawPolygon(handle, 3);
  }
}

void CutsView::Change(std::vector<std::int32_t> cuts) {
  held_.reset();
  cuts_ = std::move(cuts);
  viewport()->update();
  emit cutsChanged(cuts_);
}

void CutsView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const int x = static_cast<int>(event->position().x());
  if (const std::optional<std::size_t> cut = CutAt(x)) {
    held_ = Held{*cut};
    viewport()->update();
    return;
  }
  std::vector<std::int32_t> cuts = cuts_;
  const std::int32_t place = CharacterAt(x);
  const auto after = std::ranges::lower_bound(cuts, place);
  if (after != cuts.end() && *after == place) return;
  cuts.insert(after, place);
  Change(std::move(cuts));
}

void CutsView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (!held_) {
    viewport()->setCursor(CutAt(at.x()) ? Qt::SizeHorCursor : Qt::IBeamCursor);
    return;
  }
  const QRect reach =
      viewport()->rect().adjusted(-kFarOutside, -kFarOutside, kFarOutside, kFarOutside);
  held_->outside = !reach.contains(at);
  const std::int32_t least = held_->cut > 0 ? cuts_[held_->cut - 1] + 1 : 0;
  const std::int32_t most = held_->cut + 1 < cuts_.size()
                                ? cuts_[held_->cut + 1] - 1
                                : static_cast<std::int32_t>(kMostCharacters);
  const std::int32_t place = std::clamp(CharacterAt(at.x()), least, std::max(least, most));
  held_->moved = held_->moved || place != cuts_[held_->cut] || held_->outside;
  cuts_[held_->cut] = place;
  viewport()->update();
}

void CutsView::mouseReleaseEvent(QMouseEvent*) {
  if (!held_) return;
  const Held held = *held_;
  std::vector<std::int32_t> cuts = cuts_;
  if (held.outside) cuts.erase(cuts.begin() + static_cast<std::ptrdiff_t>(held.cut));
  held_.reset();
  viewport()->update();
  if (held.moved) Change(std::move(cuts));
}

void CutsView::mouseDoubleClickEvent(QMouseEvent* event) {
  const std::optional<std::size_t> cut = CutAt(static_cast<int>(event->position().x()));
  if (!cut) return;
  std::vector<std::int32_t> cuts = cuts_;
  cuts.erase(cuts.begin() + static_cast<std::ptrdiff_t>(*cut));
  Change(std::move(cuts));
}

}  // namespace tarnwick
