// The way of the TAB key through a page: as one reads it. Knows layouts, not what stands in them.
#pragma once

class QWidget;

namespace tarnwick {

/// Has TAB go from control to control in the order of the layouts within `page`, whatever the order in which they were made.
void TabInReadingOrder(QWidget& page);

}  // namespace tarnwick
