// Drawing a free trace over the graph. What is drawn stays on top until Esc; it is no part of the graph.
#pragma once

#include <QPointF>
#include <optional>

#include "app/canvas/canvas_mode.h"

namespace tarnwick {

class TraceMode final : public CanvasMode {
 public:
  enum class Lasts { OneTrace, UntilEsc };
  explicit TraceMode(Lasts lasts = Lasts::UntilEsc) : lasts_(lasts) {}
  ModeMaker Maker() const override { return MakeMode<TraceMode>; }
  std::string_view Hint() const override { return "Drag to Draw a Trace. Esc wipes it off"; }
  void MousePress(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseMove(GraphCanvas& canvas, QMouseEvent& event) override;
  void MouseRelease(GraphCanvas& canvas, QMouseEvent& event) override;
  QCursor Cursor() const override;

 private:
  void Add(GraphCanvas& canvas, QPointF place);

  Lasts lasts_;
  std::optional<QPointF> last_;  // place drawn to
};

}  // namespace tarnwick
