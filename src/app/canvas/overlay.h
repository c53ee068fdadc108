// How modes draw on top of a picture: every line with a light edge, to be seen on any data. Knows no mode.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>

namespace tarnwick {

inline constexpr QColor kOverlayBlue{0x1f, 0x6f, 0xc4};
inline constexpr QColor kOverlayRed{0xc0, 0x39, 0x2b};

enum class OverlayLine { Solid, Dashed };

/// Draws the outline of a path in a colour.
void DrawOverlay(QPainter& painter, const QPainterPath& path, const QColor& color,
                 OverlayLine line = OverlayLine::Solid);
void DrawOverlayLine(QPainter& painter, QPointF from, QPointF to, const QColor& color,
                     OverlayLine line = OverlayLine::Solid);
/// A ring about a point, as for the point nearest to the mouse.
void DrawRing(QPainter& painter, QPointF center, const QColor& color);

}  // namespace tarnwick
