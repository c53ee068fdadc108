// A graph as it lies on the clipboard: the forms that other programs can ask for, made when one does. Knows graphs and
// their pictures; knows no document.
#pragma once

#include <QMimeData>
#include <QSize>

#include "graph/graph_state.h"

namespace tarnwick {

class TxyGraph;

/// The bytes of a graph file.
inline constexpr const char* kGraphFormat = "Internal xyGraph Format";
/// Stands beside them for a graph that was inserted into another one.
inline constexpr const char* kChildGraphFormat = "application/x-tarnwick-child-graph";

/// The points of the current DataSet are offered as text up to so many: more would choke the programs that listen to every
/// change of the clipboard.
inline constexpr std::size_t kMostPointsAsText = 1'000'000;

enum class CopiedGraph { Whole, Child };

/// Holds the graph as it was when copied, sharing its points. It is drawn as large as it was, in twice the screen's
/// resolution.
class GraphMimeData final : public QMimeData {
  Q_OBJECT

 public:
  GraphMimeData(GraphState state, QSize size, CopiedGraph kind);

  QStringList formats() const override;
  bool hasFormat(const QString& format) const override;

 protected:
  /// Nothing for what is not offered, and for what cannot be made.
  QVariant retrieveData(const QString& format, QMetaType type) const override;

 private:
  QVariant Make(const QString& format) const;

  GraphState state_;
  QSize size_;
  CopiedGraph kind_;
};

}  // namespace tarnwick
