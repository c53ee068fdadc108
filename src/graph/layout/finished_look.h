// The look of a graph nobody has arranged yet. Knows what makes a balanced picture; changes settings, never data.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <QSizeF>

namespace tarnwick {

class TextMetrics;
class TxyGraph;

/// The look of a graph made without file or template: title `name`, cross at zero off, every axis sizing, stepping and
/// titling itself, the second Y axis shown, Arial fonts of 8, 10 bold and 9 bold points, margins 50, title offset 16,
/// bordered vertical legend at the plot's top left corner.
void DefaultAppearance(TxyGraph& graph, std::string_view name);

struct FinishedLookOptions {
  std::string title;  ///< of the graph; empty leaves it
};

/// True where a DataSet that had `before` points and has `now` is drawn in another way by a finished look.
bool LooksOtherwise(std::int32_t before, std::int32_t now);

/// Arranges a freshly imported graph for a picture of `size`: margins that fit labels and titles, the second Y axis only
/// when something is drawn against it, the legend for more than one DataSet, placed automatically, lines for dense data and
/// symbols for sparse. Recomputes the scales.
void ApplyFinishedLook(TxyGraph& graph, QSizeF size, const TextMetrics& metrics,
                       const FinishedLookOptions& options = {});

}  // namespace tarnwick
