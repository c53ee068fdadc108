// The program's icons: drawings with one ink, which takes the colour of the palette's text, so that they stand out on
// light and dark desktops alike.
#pragma once

#include <QIcon>
#include <string_view>

namespace tarnwick {

/// The drawing icons/NAME.svg; read and drawn when first shown. An empty name gives no icon.
QIcon InkIcon(std::string_view name);

}  // namespace tarnwick
