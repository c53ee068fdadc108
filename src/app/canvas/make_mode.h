// The modes that commands name. Knows every mode.
#pragma once

#include <memory>

#include "app/canvas/canvas_mode.h"

namespace tarnwick {

/// A mode of that kind, not yet begun; the canvas at rest for one that begins with a drag.
std::unique_ptr<CanvasMode> MakeMode(MouseMode mode);

}  // namespace tarnwick
