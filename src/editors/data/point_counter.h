// How many points a description of a source would give, counted on a thread of its own. Knows descriptions and the loader; no
// widget.
#pragma once

#include <QObject>
#include <QString>

#include "data/series/data_state.h"
#include "desk/work/latest_work.h"

namespace tarnwick {

class PointCounter final : public QObject {
  Q_OBJECT

 public:
  explicit PointCounter(QObject* parent) : QObject(parent), work_(nullptr) {}

  /// Begins to read the DataSet of that state, whose description says how; what was being counted is given up.
  void Count(const DataState& state);
  void GiveUp() { work_.GiveUp(); }

 signals:
  /// What the last Count came to: "1,200 points will be read.", or why none.
  void counted(const QString& text);

 private:
  LatestWork work_;
};

}  // namespace tarnwick
