// GIF as one of the picture formats that images are read and written in. Knows the image library's registry.
#pragma once

namespace tarnwick {

/// Makes GIF known to QImageReader and QImageWriter as "gif". Programs call it at their start; calling it again changes nothing.
void RegisterGifFormat();

}  // namespace tarnwick
