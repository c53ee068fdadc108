// The first lines of a text in letters of one width, with marks where its columns begin, to be dragged, added and taken away.
// Knows lines and places; reads nothing.
#pragma once

#include <QAbstractScrollArea>
#include <cstdint>
#include <optional>
#include <vector>

#include "data/import/source_preview.h"

namespace tarnwick {

class CutsView final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit CutsView(QWidget* parent);

  /// `cuts` are the first characters of the columns, from 0, rising.
  void ShowLines(const std::vector<PreviewedLine>& lines, std::vector<std::int32_t> cuts);
  QSize sizeHint() const override;

 signals:
  /// A mark was dropped elsewhere, added, or taken away.
  void cutsChanged(const std::vector<std::int32_t>& cuts);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  struct Line {
    std::vector<char32_t> characters;
    bool is_cut = false;
  };
  /// The mark that is held, and whether it would be taken away where it is now.
  struct Held {
    std::size_t cut = 0;
    bool outside = false;
    bool moved = false;
  };

  int CellWidth() const;
  int LineHeight() const;
  int RulerHeight() const { return LineHeight() + 2; }
  /// Where in the viewport a cut before this character stands.
  int PixelOf(std::int32_t character) const;
  std::int32_t CharacterAt(int x) const;
  std::optional<std::size_t> CutAt(int x) const;
  void SettleBars();
  void PaintRuler(QPainter& painter) const;
  void PaintLines(QPainter& painter) const;
  void PaintCuts(QPainter& painter) const;
  void Change(std::vector<std::int32_t> cuts);

  std::vector<Line> lines_;
  std::vector<std::int32_t> cuts_;
  std::size_t longest_ = 0;  // characters
  std::optional<Held> held_;
};

/// The first character, and those behind words where every row is blank: what a table in columns can be cut at.
std::vector<std::int32_t> CutsInGaps(const std::vector<PreviewedLine>& lines);

}  // namespace tarnwick
