// Captions of the menu entries that stand for files, windows, DataSets and marks. Knows how wide a menu may be.
#pragma once

#include <QString>
#include <cstddef>

class QFontMetrics;

namespace tarnwick {

/// "&3 Voltage": the number is the key, a "&" in the text stays one. A text that would make the menu wider than a screen
/// loses its middle.
QString NumberedCaption(std::size_t number, const QString& text, const QFontMetrics& metrics);

}  // namespace tarnwick
