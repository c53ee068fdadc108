// Models that are another curve each time they are computed. Knows models; fits nothing.
#pragma once

#include <string>

namespace tarnwick {

class TCurFit;

/// Why a prepared model can be neither fitted nor guessed for the random numbers in it, a sentence; empty where there are none.
std::string RandomTrouble(const TCurFit& model);

}  // namespace tarnwick
