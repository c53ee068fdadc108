// What speaks against columns as measurements over X. Knows names and sampled values.
#pragma once

#include "data/doubts/doubt.h"

namespace tarnwick {

/// Every second column goes on from one to the next along each row and on into the next row: rows of X and Y by turns.
void DoubtPairsInRows(const ReadColumns& read, Doubts& doubts);

/// Columns that read as days or times in digits.
void DoubtDigits(const ReadColumns& read, Doubts& doubts);

/// One value a thousand times farther from all others than these are from each other, or a code far below values that are never
/// negative (-9999), however few rows hold it.
void DoubtFarValues(const ReadColumns& read, Doubts& doubts);

/// What stands for no value elsewhere (nines, minus one) comes again as the least or the greatest value: below zero where no
/// other is, or away from all others.
void DoubtCodes(const ReadColumns& read, Doubts& doubts);

}  // namespace tarnwick
