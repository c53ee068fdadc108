// What speaks against the X of a table, whatever the choice went by. Knows names and sampled values.
#pragma once

#include "data/doubts/doubt.h"

namespace tarnwick {

/// X does not rise, or only counts the rows, while another column rises in each; or it goes in uneven steps without a name of its
/// kind beside a time or a sweep, or beside what steps evenly. Nothing of what the choice itself tells (IsXForWantOfBetter,
/// RivalOfX).
void DoubtX(const ReadColumns& read, Doubts& doubts);

/// All values of X read as days or times in digits and are taken for numbers.
void DoubtDigitsOfX(const ReadColumns& read, Doubts& doubts);

/// Days of X lie after 2049 and no field says so in four digits: years of two digits up to 68 are taken for 20xx.
void DoubtCentury(const ReadColumns& read, Doubts& doubts);

/// A column is called as X is, or begins a group of as many columns as X does and goes over the same range, on from where X ends,
/// or in the same even steps: it may be the X of those behind it.
void DoubtOneX(const ReadColumns& read, Doubts& doubts);

}  // namespace tarnwick
