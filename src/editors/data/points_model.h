// A few of a DataSet's points as rows of a table, from anywhere in millions. Knows points and how they are written; the window
// over them is moved by the view.
#pragma once

#include <QAbstractTableModel>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "data/points/point_chain.h"
#include "data/series/extremes.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

class PointsModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum class Column : std::uint8_t { Id, X, Y, Corrected, YError, Regression };

  explicit PointsModel(QObject* parent) : QAbstractTableModel(parent) {}

  /// Shares the points of `series`, a DataSet of `graph`; null for none.
  void Take(const TxyGraph* graph, const TSeries* series);
  std::size_t Size() const { return points_.Size(); }
  const PointChain& Points() const { return points_; }

  /// Shows `rows` points from the one at `first` (from 0) on, as far as there are.
  void ShowFrom(std::size_t first, int rows);
  std::size_t First() const { return first_; }
  /// Rows that are marked: of points from `first` to `last`, both included; nothing for none.
  void Mark(std::optional<std::pair<std::size_t, std::size_t>> range);
  /// Called with the id of a point and the Y that was typed for it; false where that is refused.
  void OnTyped(std::function<bool(std::int32_t id, double y)> typed) { typed_ = std::move(typed); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  /// The text of a cell, of any point.
  QString Text(std::size_t point, int column) const;
  /// "3; 9.5", of a point that need not be one of these.
  QString PairText(const Point& point) const;

 private:
  PointChain points_;
  std::vector<Column> columns_;
  std::function<double(const Point&)> error_of_;
  BaseLine base_line_;
  bool x_is_moment_ = false;
  bool y_is_moment_ = false;
  std::size_t first_ = 0;
  int rows_ = 0;
  std::optional<std::pair<std::size_t, std::size_t>> marked_;
  std::function<bool(std::int32_t, double)> typed_;
};

}  // namespace tarnwick
