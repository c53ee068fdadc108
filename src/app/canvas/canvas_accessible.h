// A graph's canvas as assistive technology sees it: a chart whose value is the point picked last.
#pragma once

namespace tarnwick {

/// Makes canvases known to assistive technology; called as often as one likes.
void InstallCanvasAccessible();

}  // namespace tarnwick
