// Numbers that the head of a text says stand for no value. Knows how heads say it; knows no rows.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// "missing value: -99.99", "NODATA_value -9999", "NULL. -999.25", "ULOD_FLAG: -7777", and the line of them in the heads of the
/// exchange formats 1001 for measurements of the atmosphere (ICARTT and its ancestor of NASA Ames). Only numbers below zero,
/// those of nines and those from 1e20 up: others may be values, or count them. Each once, as texts for MissingValues.
std::vector<std::string> DeclaredMissing(std::span<const std::string_view> head);

}  // namespace tarnwick
