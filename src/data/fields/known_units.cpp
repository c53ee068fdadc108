#include "data/fields/known_units.h"

#include <algorithm>
#include <iterator>

#include "base/ascii.h"
#include "data/fields/si_unit.h"

namespace tarnwick {
namespace {

/// Beside those of physics that take prefixes. Small and capital letters count.
constexpr std::string_view kUsual[] = {
    "%",       "‰",       "°",      "°C",     "°F",    "°K",   "K",     "mK",    "Å",      "cd",
    "sr",      "rad",     "mrad",   "urad",   "deg",   "degC", "degF",  "degK",  "min",    "mins",
    "h",       "hr",      "hrs",    "hour",   "hours", "d",    "day",   "days",  "wk",     "week",
    "weeks",   "mo",      "month",  "months", "yr",    "yrs",  "year",  "years", "secs",   "second",
    "seconds", "kyr",     "Myr",    "Gyr",    "ly",    "AU",   "dB",    "dBm",   "dBc",    "dBi",
    "dBu",     "dBV",     "dBuV",   "dBA",    "dBFS",  "ppm",  "ppb",   "ppt",   "ppmv",   "psu",
    "pH",      "psi",     "psig",   "psia",   "Torr",  "torr", "mTorr", "atm",   "mmHg",   "inHg",
    "in",      "ft",      "yd",     "mi",     "nmi",   "kn",   "kt",    "kts",   "knots",  "mph",
    "kph",     "rpm",     "RPM",    "cps",    "cpm",   "VA",   "kVA",   "MVA",   "var",    "kvar",
    "Wh",      "mWh",     "kWh",    "MWh",    "GWh",   "TWh",  "Ah",    "mAh",   "Vpp",    "Vrms",
    "Nm",      "mNm",     "kNm",    "Ncm",    "M",     "mM",   "uM",    "nM",    "pM",     "lb",
    "lbs",     "lbf",     "oz",     "gal",    "ha",    "t",    "Mt",    "Gt",    "GtC",    "px",
    "pt",      "pts",     "bp",     "kb",     "Mb",    "Gb",   "k",     "Mio",   "bn",     "G",
    "mG",      "kG",      "gauss",  "Oe",     "kOe",   "emu",  "memu",  "mas",   "arcsec", "arcmin",
    "mag",     "Msun",    "Rsun",   "Lsun",   "Da",    "kDa",  "u",     "amu",   "sccm",   "slm",
    "cP",      "cSt",     "Ci",     "mCi",    "uCi",   "rem",  "mrem",  "IU",    "mIU",    "MWd",
    "micron",  "microns", "counts", "cts",    "Gal",   "mGal"};

/// A letter, or a byte of one beyond ASCII.
bool IsOfWord(char c) {
  return IsLetter(c) || c == '%' || static_cast<unsigned char>(c) >= 0x80;
}

bool IsKnownWord(std::string_view word) {
  return std::ranges::find(kUsual, word) != std::end(kUsual) || WithoutPrefix(word).has_value();
}

}  // namespace

bool IsKnownUnit(std::string_view unit) {
  bool any = false;
  while (!unit.empty()) {
    const auto begin = std::ranges::find_if(unit, &IsOfWord);
    const auto end = std::find_if_not(begin, unit.end(), &IsOfWord);
    if (begin == unit.end()) break;
    if (!IsKnownWord({begin, end})) return false;
    any = true;
    unit = {end, unit.end()};
  }
  return any;
}

}  // namespace tarnwick
