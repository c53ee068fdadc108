#include "editors/data/points_model.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <utility>

#include "base/day_number.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "data/series/point_errors.h"
#include "desk/widgets/text.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

using enum PointsModel::Column;

QString ValueText(double value, bool is_moment) {
  if (IsUndefined(value)) return {};
  return ToQt(is_moment ? MomentText(value) : ShortestText(value));
}

}  // namespace

void PointsModel::Take(const TxyGraph* graph, const TSeries* series) {
  beginResetModel();
  points_ = series != nullptr ? series->Points() : PointChain();
  columns_ = {Id, X, Y};
  if (series != nullptr) {
    base_line_ = series->GetBaseLine();
    if (base_line_.offset != 0 || base_line_.slope != 0) columns_.push_back(Corrected);
    if (series->Errors().y.kind != ErrorKind::None) columns_.push_back(YError);
    if (series->RegressionType() != RegressionType::None) columns_.push_back(Regression);
    error_of_ = [errors = series->Errors()](const Point& point) { return YErrorOf(errors, point); };
    x_is_moment_ = graph->Axis(AxisId::X).ShowAsTime();
    y_is_moment_ = graph->Axis(YAxisOf(*series)).ShowAsTime();
  }
  first_ = std::min(first_, points_.Size());
  endResetModel();
}

void PointsModel::ShowFrom(std::size_t first, int rows) {
  if (first == first_ && rows == rows_) return;
  beginResetModel();
  first_ = first;
  rows_ = rows;
  endResetModel();
}

void PointsModel::Mark(std::optional<std::pair<std::size_t, std::size_t>> range) {
  marked_ = range;
  if (rowCount() == 0) return;
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::BackgroundRole});
}

int PointsModel::rowCount(const QModelIndex&) const {
  return static_cast<int>(
      std::min<std::size_t>(static_cast<std::size_t>(rows_), points_.Size() - first_));
}

int PointsModel::columnCount(const QModelIndex&) const {
  return static_cast<int>(columns_.size());
}

QString PointsModel::Text(std::size_t place, int column) const {
  const Point point = points_.At(place);
  switch (columns_[static_cast<std::size_t>(column)]) {
    case Id:
      return QString::number(point.id);
    case X:
      return ValueText(point.x, x_is_moment_);
    case Y:
      return ValueText(point.y, y_is_moment_);
    case Corrected:
      return ValueText(base_line_.CorrectedY(point.x, point.y), false);
    case YError:
      return ValueText(error_of_(point), false);
    case Regression:
      return ValueText(point.regression, y_is_moment_);
  }
  return {};
}

QString PointsModel::PairText(const Point& point) const {
  return ValueText(point.x, x_is_moment_) + "; " + ValueText(point.y, y_is_moment_);
}

QVariant PointsModel::data(const QModelIndex& index, int role) const {
  const std::size_t place = first_ + static_cast<std::size_t>(index.row());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return Text(place, index.column());
    case Qt::TextAlignmentRole:
      return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::BackgroundRole:
      if (marked_ && place >= marked_->first && place <= marked_->second) {
        return QGuiApplication::palette().brush(QPalette::Highlight);
      }
      return {};
    case Qt::ForegroundRole:
      if (marked_ && place >= marked_->first && place <= marked_->second) {
        return QGuiApplication::palette().brush(QPalette::HighlightedText);
      }
      return {};
    default:
      return {};
  }
}

QVariant PointsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical)
    return QString::number(first_ + static_cast<std::size_t>(section) + 1);
  switch (columns_[static_cast<std::size_t>(section)]) {
    case Id:
      return tr("#");
    case X:
      return tr("X");
    case Y:
      return tr("Y");
    case Corrected:
      return tr("Y less base line");
    case YError:
      return tr("Error of Y");
    case Regression:
      return tr("Regression");
  }
  return {};
}

Qt::ItemFlags PointsModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  const bool typed = columns_[static_cast<std::size_t>(index.column())] == Y;
  return typed ? flags | Qt::ItemIsEditable : flags;
}

bool PointsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !typed_) return false;
  const std::string text = value.toString().toStdString();
  const Point point = points_.At(first_ + static_cast<std::size_t>(index.row()));
  if (Text(first_ + static_cast<std::size_t>(index.row()), index.column()).toStdString() == text) {
    return false;
  }
  const std::optional<double> y = y_is_moment_ ? ParseDay(text) : ParseNumber(text);
  return y && typed_(point.id, *y);
}

}  // namespace tarnwick
