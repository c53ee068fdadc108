// What the columns of a table say against the parts they got. Knows names and sampled values, and none of the reasons for which
// the parts were given; silence is for what is certain.
#pragma once

#include "data/doubts/doubt.h"

namespace tarnwick {

/// All that there is against X and against what is drawn over it. Of what the user has settled nothing is said.
Doubts DoubtsOfColumns(const ReadColumns& read);

}  // namespace tarnwick
