// A table to read that shows all its rows: as high as they are, so that what is around it scrolls. Knows nothing of what
// stands in it.
#pragma once

#include <QTableWidget>

namespace tarnwick {

class FullTable final : public QTableWidget {
  Q_OBJECT

 public:
  /// Whether the last column takes what is left of the width.
  enum class Width { OfContents, Whole };

  FullTable(const QString& name, Width width, QWidget* parent = nullptr);

  QTableWidgetItem* Put(int row, int column, const QString& text,
                        Qt::Alignment alignment = Qt::AlignLeft);
  /// Makes columns and table as large as what now stands in them; columns that find no room are scrolled to.
  void FitContents();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  Width width_;
};

}  // namespace tarnwick
