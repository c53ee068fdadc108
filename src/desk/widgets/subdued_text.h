// The colour of hints and of what stands beside a value. Knows palettes.
#pragma once

namespace tarnwick {

/// Makes the program's subdued texts (QPalette::PlaceholderText) a paler form of its other ones. Themes that tell no colour for
/// them leave black, which nobody can read on a dark window.
void SubdueByTextColor();

}  // namespace tarnwick
