// All pictures on one sheet: a row of scales in their own pixels, then a grid of pictures of equal size, each with its
// caption. Knows images, no graph.
#pragma once

#include <string>
#include <vector>

#include <QImage>

namespace tarnwick::gallery {

struct SheetPicture {
  QImage image;
  std::string caption;
};

/// Pictures of another size than the grid's cell are scaled to fit it, except those of the first row.
QImage MakeContactSheet(const std::vector<SheetPicture>& first_row,
                        const std::vector<SheetPicture>& grid, QSize cell);

}  // namespace tarnwick::gallery
