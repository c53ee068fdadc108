// The first lines of a source as they are cut, with the columns that are read in colour. Knows previews; loads nothing.
#pragma once

#include <QTableWidget>
#include <cstdint>
#include <string>
#include <vector>

#include "data/import/source_preview.h"

namespace tarnwick {

/// What a column of the source is read for.
enum class ColumnUse : std::uint8_t { X, Y, YError, XError, AnotherY };

class PreviewTable final : public QTableWidget {
  Q_OBJECT

 public:
  explicit PreviewTable(QWidget* parent);

  /// `uses`: the places of the columns for X, Y, errors of Y and of X, then those of further DataSets; negative for none.
  void ShowPreview(const SourcePreview& preview, const std::vector<int>& uses);

 signals:
  /// The user wants a column to be read for something.
  void columnChosen(const QString& name, tarnwick::ColumnUse use);

 private:
  void OfferUses(QPoint at);
  bool IsAnotherY(int column) const;
  QColor ColorOf(int column, const std::vector<int>& uses) const;

  std::vector<std::string> columns_;
  std::vector<int> uses_;
};

}  // namespace tarnwick
