// Shapes as a metafile takes them: polygons cut to a rectangle, lines cut into dashes. Pure geometry.
#pragma once

#include <QList>
#include <QPolygonF>
#include <QRectF>

namespace tarnwick {

/// The part of the polygon inside `area`, by the method of Sutherland and Hodgman ("Reentrant polygon clipping", Communications
/// of the ACM 17 (1974) 1); empty when nothing is inside. Vertices that are no numbers are left out.
QPolygonF ClipPolygon(const QPolygonF& polygon, const QRectF& area);

/// The dashes along a polyline. `pattern` holds the lengths of dash, gap, dash, gap...; a pattern without extent leaves the line
/// whole. Each dash is `shortened` by that length at either end, as room for the pen's round ends, and keeps a rest of it.
QList<QPolygonF> CutIntoDashes(const QPolygonF& line, const QList<qreal>& pattern,
                               double shortened);

}  // namespace tarnwick
