#include "app/canvas/canvas_accessible.h"

#include <QAccessibleWidget>

#include "app/canvas/graph_canvas.h"

namespace tarnwick {
namespace {

class CanvasAccessible final : public QAccessibleWidget {
 public:
  explicit CanvasAccessible(GraphCanvas* canvas)
      : QAccessibleWidget(canvas, QAccessible::Chart), canvas_(*canvas) {}

  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return canvas_.PickedText();
    return QAccessibleWidget::text(kind);
  }

 private:
  const GraphCanvas& canvas_;
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* canvas = qobject_cast<GraphCanvas*>(object);
  // Qt takes the interface over.
  return canvas ? std::make_unique<CanvasAccessible>(canvas).release() : nullptr;
}

}  // namespace

void InstallCanvasAccessible() {
  QAccessible::installFactory(MakeInterface);
}

}  // namespace tarnwick
