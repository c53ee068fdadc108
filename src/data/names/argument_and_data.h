// What is measured over what, in words: "Channel Data", "Time (s) Voltage (V)". Knows names only.
#pragma once

#include <span>
#include <string>

namespace tarnwick {

/// Two names that stand for an argument and what was counted or measured at it, "Energy", "Counts", or for a place on a globe.
bool AreArgumentAndData(std::span<const std::string> names);

}  // namespace tarnwick
