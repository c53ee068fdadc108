// What columns are called that others are measured over. Knows words only.
#pragma once

#include <string_view>

namespace tarnwick {

/// "freq", "2theta", "x [mm]": what is swept or scanned, against which the rest was measured.
bool NamesScan(std::string_view name);

/// "time", "t", "date", "year".
bool NamesTime(std::string_view name);

/// A time, or how long since a beginning: "day", "age", "visit".
bool NamesPeriod(std::string_view name);

/// A longitude and the latitude beside it, in either order: "lat" and "lon", "britlong" and "britlat".
bool NameCoordinates(std::string_view one, std::string_view other);

/// "longitude", "lon", "britlong": how far east.
bool NamesLongitude(std::string_view name);

/// What others are measured over: "dose", "depth", "angle", times and scans.
bool NamesArgument(std::string_view name);

}  // namespace tarnwick
