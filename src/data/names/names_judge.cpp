#include "data/names/names_judge.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/fields/text_fields.h"
#include "data/names/apart_words.h"
#include "data/names/argument_and_data.h"
#include "data/names/name_words.h"
#include "data/names/names_line.h"
#include "data/names/number_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLongestUnit = 16;
constexpr std::size_t kFewestOfTable = 6;
constexpr std::size_t kFewestCutTightly = 3;
constexpr std::size_t kNamesPerWord = 8;  // of a sentence that may be a name among them

using Names = std::vector<std::string>;

bool IsUnit(std::string_view text) {
  // "1e-3" is the unit of a salinity, "1" that of a ratio.
  const std::string lower = LowerAscii(text);
  if (IsBracketed(text) || lower.starts_with("degree") || lower.starts_with("1e-")) return true;
  // In small letters, between strokes.
  constexpr std::string_view kUnits =
      "|#|-|--|%|s|ms|us|ns|sec|seconds|min|h|hr|hours|d|days|m|mm|cm|km|nm|um|v|mv|uv|kv|a|"
      "ma|ua|na|pa|hz|khz|mhz|ghz|ohm|ohms|kohm|k|c|degc|deg|rad|f|nf|uf|pf|hh|w|mw|"
      "kw|j|kj|ev|kev|mev|n|kn|mpa|kpa|hpa|bar|mbar|dbar|psi|torr|kg|g|mg|ug|l|ml|ul|mol|mmol|"
      "second|volt|amp|m/s|m/s2|m/s^2|km/h|knot|knots|rpm|cm-1|cm^-1|1/"
      "cm|counts|cps|au|a.u.|arb|db|dbm|ppm|ppb|psu|pss-78|its-90|w/m2|"
      "w/m^2|t|mt|g/l|mg/l|bits|pixels|utc|v/ref|degrees|volts|amps|celsius|kelvin|°|°c|°f|"
      "Ω|µa|µm|µv|µs|ft|in|lb|lbs|deg c|degt|nmi|mau|emu|oe|gauss|tesla|"
      "msun|rsun|lsun|gyr|myr|kpc|pc|jy|mjy|dex|";
  if (text.size() > kLongestUnit) return false;
  // "V (m/s)": a name with its unit.
  const std::size_t open = text.find(" (");
  if (open != text.npos && open > 0 && text.ends_with(')') &&
      IsUnit(text.substr(open + 2, text.size() - open - 3))) {
    return false;
  }
  return kUnits.find("|" + lower + "|") != kUnits.npos || text.find('/') != text.npos ||
         text.find('^') != text.npos || text.find("vs") != text.npos;
}

bool HoldsWordOfSentence(std::string_view name) {
  constexpr std::string_view kWords[] = {
      "the",    "of",   "by", "is",  "are", "was",  "for",   "from",  "this",  "and", "to", "in",
      "with",   "on",   "at", "set", "see", "or",   "an",    "file",  "data",  "not", "be", "made",
      "units:", "were", "my", "our", "has", "have", "using", "which", "these", "its"};
  // What stands in brackets tells of a value, and so does "in" before a unit: "[Magnitude in dB]", "U in mV".
  name = name.substr(0, name.find_first_of("[("));
  if (const std::size_t in = name.rfind(" in "); in != name.npos && IsUnit(name.substr(in + 4))) {
    name = name.substr(0, in);
  }
  // "5 to 14" tells a range.
  if (!name.empty() && IsDigit(name.front())) return false;
  while (!name.empty()) {
    const std::string_view word = name.substr(0, name.find(' '));
    // In other letters it is arsenic.
    if (word == "as") return true;
    if (std::ranges::find(kWords, LowerAscii(word)) != std::end(kWords)) return true;
    name = TrimBlankBytes(name.substr(word.size()));
  }
  return false;
}

/// Cut by tabs, semicolons, bars or commas without a blank behind any of them, as no sentence is.
bool IsCutTightly(std::string_view line, std::size_t names) {
  return std::ranges::any_of(std::string_view("\t;|,"), [&](char separator) {
    std::size_t cuts = 0;
    for (std::size_t i = line.find(separator); i != line.npos; i = line.find(separator, i + 1)) {
      if (i + 1 < line.size() && line[i + 1] == ' ') return false;
      ++cuts;
    }
    return cuts + 1 == names;
  });
}

/// "x   y   on" and `"from" "to"` are cut as no sentence is, and none says "from to".
bool StandApart(const Names& names, std::string_view line) {
  const auto leads = [](const std::string& name, const std::string& next) {
    return LowerAscii(name) == "from" && LowerAscii(next) == "to";
  };
  return AllInQuotes(line, names.size()) || HasWideGapsOnly(line) ||
         std::ranges::adjacent_find(names, leads) != names.end();
}

/// True when words of a sentence are among the names. Between commas or tabs "on" and "set" are names like others, and so is
/// "in" among many; as many commas as this are in no sentence, so that "Temperature of the inlet" is a name there.
bool HoldsSentence(const Names& names, std::string_view line, Preamble preamble) {
  const bool by_blanks = line.find_first_of(",;\t|") == line.npos && !StandApart(names, line);
  const auto count = [&names](auto is) {
    return static_cast<std::size_t>(std::ranges::count_if(names, is));
  };
  // A single name may hold "of" or "at"; several such words are none.
  const std::size_t words = count([&](const std::string& name) {
    return (by_blanks || name.find(' ') != name.npos) && HoldsWordOfSentence(name);
  });
  const std::size_t single = count([&](const std::string& name) {
    return by_blanks && name.find(' ') == name.npos && HoldsWordOfSentence(name);
  });
  const bool address =
      count([](const std::string& name) { return name.find("://") != name.npos; }) > 0;
  const std::size_t fewest = !IsCutTightly(line, names.size()) ? kFewestOfTable
                             : preamble == Preamble::None      ? 2
                                                               : kFewestCutTightly;
  const bool table =
      !by_blanks && names.size() >= fewest && std::ranges::none_of(names, &std::string::empty);
  // Nor does a sentence end each of its parts with a unit.
  const bool units = !by_blanks && std::ranges::all_of(names, [](const std::string& name) {
    return name.ends_with(')') || name.ends_with(']');
  });
  const bool quoted = !by_blanks && AllInQuotes(line, names.size());
  if ((table || units || quoted) && !address) return false;
  return address || 2 * words >= names.size() || kNamesPerWord * single > names.size();
}

template <class Is>
bool AllOfFilled(const Names& names, Is is) {
  std::size_t filled = 0;
  for (const std::string& name : names) {
    if (name.empty()) continue;
    ++filled;
    if (!is(name)) return false;
  }
  return filled > 0;
}

bool EndsLikeKey(const std::string& name) {
  return name.ends_with(':') || name.ends_with('=');
}

bool IsYear(const std::string& name) {
  const std::optional<double> value = ParseNumber(name);
  return name.size() == 4 && value && *value > 1800 && *value <= 2100;
}

/// "[END COURSE HEADER]", "DATA:", "}": a part of the file begins or ends.
bool MarksPart(const Names& names, std::string_view line) {
  constexpr std::string_view kWords[] = {"end", "begin", "start", "data", "header"};
  const std::string only = names.size() == 1 ? LowerAscii(names.front()) : std::string();
  if (only == "data:" || only == "begin:") return true;
  const auto is_sign = [](char c) {
    return !IsLetter(c) && !IsDigit(c) && static_cast<unsigned char>(c) < 0x80;
  };
  const bool signs = std::ranges::all_of(
      names, [&](const std::string& name) { return std::ranges::all_of(name, is_sign); });
  if (signs) return true;
  line = TrimBlankBytes(line);
  if (line.size() < 3 || line.front() != '[' || line.back() != ']') return false;
  return std::ranges::any_of(names, [&kWords](const std::string& name) {
    return std::ranges::find(kWords, LowerAscii(name)) != std::end(kWords);
  });
}

/// "<<DATA>>", "$DATA:", "[Points]" over a single column begin a part of the file.
bool MarksSection(const Names& names) {
  constexpr std::string_view kMarks = "$<[{~>@*";
  return names.size() == 1 && !names.front().empty() &&
         kMarks.find(names.front().front()) != kMarks.npos;
}

/// "Dimension,101,101,101"
bool RepeatNumbers(const Names& names) {
  for (std::size_t i = 1; i < names.size(); ++i) {
    const bool number = KindOfField(names[i]) == FieldKind::Number;
    if (number && std::ranges::count(names, names[i]) > 1) return true;
  }
  return false;
}

/// "(6)Hebe 2.424609 0.202491 14.754050": a row in the guise of a remark.
bool AreMeasured(const Names& names, std::string_view line) {
  const auto decimals = std::ranges::count_if(names, [](const std::string& name) {
    return name.find('.') != name.npos && KindOfField(name) == FieldKind::Number;
  });
  const bool by_blanks = line.find_first_of(",;|") == line.npos;
  return by_blanks && 2 * static_cast<std::size_t>(decimals) > names.size();
}

/// "Sample 12", "run 3", "Plate A": which of those that were measured.
bool TellsWhich(const std::string& name) {
  constexpr std::string_view kWords[] = {"sample",     "run",   "scan",     "shot",    "exp",
                                         "experiment", "batch", "trial",    "lot",     "plate",
                                         "series",     "test",  "specimen", "session", "subject",
                                         "patient",    "site",  "station",  "group",   "day"};
  const std::size_t blank = name.find(' ');
  if (blank == name.npos || blank + 1 == name.size()) return false;
  const std::string which = name.substr(name[blank + 1] == '#' ? blank + 2 : blank + 1);
  return std::ranges::find(kWords, LowerAscii(name.substr(0, blank))) != std::end(kWords) &&
         (ParseInteger(which) || (which.size() == 1 && IsLetter(which.front())));
}

/// "BM (ntrials=0)", "fspread0 0.2", "p = 1.2 bar": a word and what it is set to.
bool TellsValue(const std::string& name) {
  if (TellsWhich(name)) return true;
  const std::size_t blank = name.find(' ');
  const bool number = blank != name.npos && name.find('.', blank) != name.npos &&
                      KindOfField(name.substr(blank + 1)) == FieldKind::Number;
  const std::size_t equals = name.find('=');
  if (number || equals == name.npos) return number;
  const std::string_view value = TrimBlanks(std::string_view(name).substr(equals + 1));
  return ParseNumber(value.substr(0, value.find_first_of(" )"))).has_value();
}

/// "ZONE T=one I=50 F=POINT", "Reference level =-20.00"
bool AreAssignments(const Names& names) {
  const auto begins = [](const std::string& name) { return name.starts_with('='); };
  if (std::ranges::any_of(names, begins)) return true;
  Names keys;
  for (const std::string& name : names) {
    const std::size_t equals = name.find('=');
    const bool assigns =
        equals != name.npos && equals + 1 < name.size() && name.find(' ') == name.npos;
    if (assigns) keys.push_back(name.substr(0, equals));
  }
  const auto key = [](const std::string& name) { return name.substr(0, name.find_first_of(" =")); };
  const bool differ = names.size() > 1 && key(names.front()) != key(names.back());
  if (differ && std::ranges::all_of(names, &TellsValue)) return true;
  // "h v=5 v=10", "cell=adeno,cell=large": one thing, set to several values, tells curves apart.
  std::ranges::sort(keys);
  const bool one_key = std::ranges::adjacent_find(keys) != keys.end();
  return !one_key && 2 * keys.size() > names.size();
}

/// "SIZE_X:128", "SIZE_Y:128", without a blank; "Ch:1" and "Ch:2" are names.
bool AreKeysWithValues(const Names& names) {
  Names keys;
  for (const std::string& name : names) {
    const std::size_t colon = name.find(':');
    const bool keyed = colon != std::string::npos && colon > 0 && IsLetter(name.front()) &&
                       ParseNumber(name.substr(colon + 1));
    if (keyed) keys.push_back(name.substr(0, colon));
  }
  std::ranges::sort(keys);
  const bool one_key = std::ranges::adjacent_find(keys) != keys.end();
  return !one_key && !keys.empty() && 2 * keys.size() >= names.size();
}

/// "Pareto: 0  Size: 180", `track name="Kc cells"`; "Channel: 1" and "Channel: 2" are names.
bool AreKeysAndValues(const Names& names, std::string_view line) {
  if (line.find("=\"") != line.npos) return true;
  std::size_t values = 0;
  Names keys;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::size_t colon = names[i].find(": ");
    if (colon != std::string::npos && ParseNumber(names[i].substr(colon + 2))) {
      keys.push_back(names[i].substr(0, colon));
    } else if (names[i].ends_with(':') && i + 1 < names.size() && ParseNumber(names[i + 1])) {
      ++values;
      keys.push_back(names[i]);
    }
  }
  const bool one_key = std::ranges::count(keys, keys.empty() ? "" : keys.front()) > 1;
  return !one_key && keys.size() > 1 && 2 * keys.size() >= names.size() - values;
}

/// "1400. 3.6" between wide blanks
bool IsRowOfNumbers(const std::string& name) {
  std::string_view rest = name;
  std::size_t words = 0;
  for (; !rest.empty(); ++words) {
    const std::string_view word = rest.substr(0, rest.find(' '));
    if (!ParseNumber(word)) return false;
    rest = TrimBlankBytes(rest.substr(word.size()));
  }
  return words > 1;
}

/// "[begin" and "end]": what stands in brackets as a whole is cut.
bool CutBrackets(const Names& names) {
  bool open = false;
  for (const std::string& name : names) {
    const auto opens = std::ranges::count(name, '[');
    const auto closes = std::ranges::count(name, ']');
    if (open && closes > opens) return true;
    open = open || opens > closes;
  }
  return false;
}

/// "2.4445  .01373  .17503   rchrg", "(variable" and "on nodes)": what was cut where no names are parted.
bool AreCutAmiss(const Names& names) {
  if (CutBrackets(names)) return true;
  bool open = false;
  for (const std::string& name : names) {
    const std::size_t first = name.find(' ');
    const std::size_t second = name.find_first_not_of(' ', std::min(first, name.size()));
    if (second != name.npos && name.find('.') < second && ParseNumber(name.substr(0, first)) &&
        ParseNumber(name.substr(second, name.find(' ', second) - second))) {
      return true;
    }
    const auto opens = std::ranges::count(name, '(');
    const auto closes = std::ranges::count(name, ')');
    if (open && closes > opens) return true;
    open = opens > closes;
  }
  return false;
}

/// "(1999)", "1999)"
bool HoldsYearInBrackets(std::string_view text) {
  const std::size_t close = text.rfind(')');
  if (close == text.npos || close < 4) return false;
  const bool opened = close == 4 || text[close - 5] == '(' || text[close - 5] == ' ';
  return opened && IsYear(std::string(text.substr(close - 4, 4)));
}

/// "$1" and "*($1-111)^2": how numbers were made.
bool HoldsFormula(std::string_view name) {
  for (std::size_t i = 0; i + 1 < name.size(); ++i) {
    const bool field = name[i] == '$' && IsDigit(name[i + 1]);
    const bool product = name[i] == '*' && i > 0 && IsDigit(name[i - 1]) && IsDigit(name[i + 1]);
    if (field || product) return true;
  }
  return false;
}

/// "Smith et al., J. Phys. 12, 345 (1999)": where the numbers were published.
bool AreCitation(const Names& names, std::string_view line) {
  if (line.find(" et al") != line.npos) return true;
  int abbreviated = 0;
  int numbers = 0;
  for (std::string_view rest = line; !rest.empty();) {
    const std::string_view word = rest.substr(0, rest.find_first_of(" ,;\t"));
    rest = TrimBlankBytes(rest.substr(std::min(word.size() + 1, rest.size())));
    if (word.empty()) continue;
    abbreviated +=
        word.size() > 1 && word.ends_with('.') && IsLetter(word[word.size() - 2]) ? 1 : 0;
    numbers += ParseInteger(word) ? 1 : 0;
  }
  const bool dated = std::ranges::any_of(names, &HoldsYearInBrackets);
  return (dated && numbers > 0) || (abbreviated > 1 && numbers > 0);
}

/// "(F12.5,2E16.6)": how numbers were written.
bool IsFortranFormat(std::string_view text) {
  if (text.size() < 4 || text.front() != '(' || text.back() != ')') return false;
  const std::vector<std::string_view> parts = PartsBetween(text.substr(1, text.size() - 2), ',');
  return std::ranges::all_of(parts, [](std::string_view part) {
    part = TrimBlankBytes(part);
    const std::size_t letter = std::min(part.find_first_not_of("0123456789"), part.size());
    constexpr std::string_view kLetters = "FEGDIAXfegdiax";
    if (letter == part.size() || kLetters.find(part[letter]) == kLetters.npos) return false;
    const std::string_view width = part.substr(letter + 1);
    const bool moves = LowerAscii(part.substr(letter, 1)) == "x";
    return width.find_first_not_of("0123456789.") == width.npos && (moves || !width.empty());
  });
}

/// What stands between blanks and tells of the file: "Street, Boston, MA  02110, USA", "save('t.txt')", "% Jane Doe 1997",
/// "begin data.", "@TYPE xy", "10 sizes", "# units Angstroms".
bool TellOfFile(const Names& all, std::string_view line) {
  Names names = all;
  std::erase(names, std::string());
  if (names.empty()) return false;
  const std::string& first = names.front();
  const std::string& last = names.back();
  if (std::ranges::any_of(names, &IsFortranFormat)) return true;
  if (LowerAscii(first).starts_with("units ") && names.size() == 1) return true;
  if (TrimBlankBytes(line).starts_with('@') || (names.size() == 2 && LowerAscii(first) == "units"))
    return true;
  const auto is_code = [](const std::string& name) {
    return name.find("('") != name.npos || HoldsFormula(name);
  };
  if (std::ranges::any_of(names, is_code) || std::ranges::any_of(names, &IsRowOfNumbers)) {
    return true;
  }
  if (line.find_first_of("\t;|") != line.npos || names.size() < 2) return false;
  const auto is_list = [](const std::string& name) {
    const std::size_t comma = name.find(", ");
    return comma != name.npos && name.find_first_of("([\"") > comma;
  };
  if (line.find('"') == line.npos && std::ranges::any_of(names, is_list)) return true;
  const auto numbers = std::ranges::count_if(
      names, [](const std::string& name) { return KindOfField(name) == FieldKind::Number; });
  const std::string_view text = TrimBlankBytes(line);
  // "NACA 2414", "5.0 mag   ND filter 1.0M": numbers name columns where they rise, or are years.
  const auto is_figure = [](const std::string& name) {
    const FieldKind kind = KindOfField(name);
    return !IsYear(name) && (kind == FieldKind::Number ||
                             (kind == FieldKind::Quantity &&
                              name.find('.') < name.find_first_not_of("+-.0123456789")));
  };
  if (line.find(',') == line.npos && line.find('"') == line.npos && !BeginsWithOneNumber(names) &&
      std::ranges::any_of(names, is_figure)) {
    return true;
  }
  const bool plain = text.empty() || IsLetter(text.front()) || IsDigit(text.front());
  const bool by_blanks = line.find(',') == line.npos;
  if (by_blanks && numbers == 1 &&
      (plain ? first == "0" || ParseInteger(first)
             : IsYear(last) || ParseInteger(first) || (names.size() == 2 && ParseInteger(last)))) {
    return names.size() == 2 || !plain;
  }
  // A title, a question.
  if (by_blanks && (text.ends_with(':') || text.ends_with('?') || text.ends_with('!'))) return true;
  const auto ends = [](const std::string& name) { return name.ends_with('.'); };
  return by_blanks && last.size() > 3 && std::ranges::count_if(names, ends) == 1 && ends(last);
}

}  // namespace

bool IsRule(std::string_view line) {
  line = TrimBlankBytes(line);
  constexpr std::string_view kStrokes = "-=+_|#*~:. \t,;";
  return std::all_of(line.begin(), line.end(),
                     [&](char c) { return kStrokes.find(c) != kStrokes.npos; });
}

/// "sep=;" tells programs of spreadsheets how to part the lines.
bool TellsSeparator(std::string_view line) {
  constexpr std::size_t kLongest = 6;
  line = TrimBlankBytes(line);
  return line.size() <= kLongest && LowerAscii(line).starts_with("sep=");
}

/// "Calculated from the fit of 12 March", with nothing over all columns but the first.
bool IsRemarkOverColumns(const Names& names) {
  constexpr std::size_t kFewest = 3, kLongest = 40;
  return names.size() >= kFewest && names.front().size() > kLongest &&
         std::all_of(names.begin() + 1, names.end(),
                     [](const std::string& name) { return name.empty(); });
}

bool AreNames(const Names& names, std::string_view line, Preamble preamble) {
  if (IsRemarkOverColumns(names)) return false;
  if (TellsSeparator(line) || IsRule(line) || AllOfFilled(names, &IsColumnWidth)) return false;
  if (AreNumbersAcross(names) || CountBetweenTexts(names)) return true;
  std::size_t filled = 0;
  std::size_t texts = 0;
  std::size_t words = 0;          // of these, what does not stand for a missing value
  std::size_t numbers_ahead = 0;  // of the first text
  for (const std::string& name : names) {
    const FieldKind kind = KindOfField(name);
    filled += kind == FieldKind::Empty ? 0 : 1;
    texts += kind == FieldKind::Text || kind == FieldKind::Placeholder ? 1 : 0;
    words += kind == FieldKind::Text ? 1 : 0;
    numbers_ahead += kind == FieldKind::Number && texts == 0 ? 1 : 0;
  }
  // Numbers are put in quotes where they name.
  if (texts == 0) return filled > 0 && AllInQuotes(line, filled) && !RepeatNumbers(names);
  if (words == 0 && names.size() > 1) return false;  // a row of missing values
  if (numbers_ahead > 1 || RepeatNumbers(names) || AreAssignments(names) ||
      AreKeysAndValues(names, line) || AreKeysWithValues(names) || AreMeasured(names, line) ||
      MarksSection(names) || MarksPart(names, line) || AreCitation(names, line) ||
      AreCutAmiss(names) || TellOfFile(names, line))
    return false;
  return (!HoldsSentence(names, line, preamble) || AreArgumentAndData(names)) &&
         (2 * texts >= filled || KindOfField(names.front()) == FieldKind::Text);
}

bool AreSymbols(const Names& names) {
  return std::ranges::all_of(names, [](const std::string& name) {
    return name.size() == 1 || name.find_first_of("_[(") != name.npos;
  });
}

bool AreTypes(const Names& names) {
  constexpr std::string_view kTypes[] = {"null", "double", "float",  "real",    "int",
                                         "long", "char",   "string", "integer", "numeric",
                                         "text", "bool",   "date",   "float64", "int64"};
  const auto is_type = [&kTypes](const std::string& name) {
    return name.empty() || std::ranges::find(kTypes, LowerAscii(name)) != std::end(kTypes);
  };
  return names.size() > 1 && std::ranges::all_of(names, is_type) &&
         names.size() > 2 * static_cast<std::size_t>(std::ranges::count(names, std::string()));
}

bool AreSetting(const Names& names) {
  constexpr std::size_t kMostFilled = 3;
  Names filled;
  std::ranges::copy_if(names, std::back_inserter(filled),
                       [](const std::string& name) { return !name.empty(); });
  const auto is_mark = [](const std::string& name) { return name == ":" || name == "="; };
  if (std::ranges::any_of(filled, is_mark)) return true;
  const auto keys = std::ranges::count_if(filled, EndsLikeKey);
  if (filled.size() > 1 && EndsLikeKey(filled.front()) && keys == 1) return true;
  // "intensity (dB): 76.4", "type: d"; "U: (mV)" is a name with its unit.
  const std::size_t colon = filled.size() == 1 ? filled.front().find(": ") : std::string::npos;
  if (colon != std::string::npos) {
    const std::string said = filled.front().substr(colon + 2);
    if (IsValue(KindOfField(said)) ||
        (names.size() == 1 && filled.front().find(' ') > colon && !IsBracketed(said))) {
      return true;
    }
  }
  // "generator mt19937  seed = 3022359314"
  const std::size_t equals =
      filled.size() == 1 && names.size() == 1 ? filled.front().find("= ") : std::string::npos;
  if (equals != std::string::npos && IsValue(KindOfField(filled.front().substr(equals + 2)))) {
    return true;
  }
  if (filled.size() < 2 || filled.size() > kMostFilled) return false;
  // "Vertical Units,V"
  constexpr std::string_view kUnits[] = {"unit", "units"};
  if (filled.size() == 2 && HasWord(filled.front(), kUnits) && IsUnit(filled.back())) return true;
  if (KindOfField(filled.front()) != FieldKind::Text) return false;
  if (filled.size() > 2 && filled[1] == "1" && filled[2] == "2") return false;
  return std::all_of(filled.begin() + 1, filled.end(), [](const std::string& name) {
    return IsValue(KindOfField(name)) && !IsYear(name);
  });
}

bool AreUnits(const Names& names) {
  // "Units", "s", "V": a label ahead of them, over rows that begin with an empty field.
  if (names.size() > 1 && LowerAscii(names.front()).starts_with("unit")) {
    return AreUnits(Names(names.begin() + 1, names.end())) ||
           AllOfFilled(Names(names.begin() + 1, names.end()), &IsUnit);
  }
  std::size_t filled = 0;
  std::size_t units = 0;
  bool sure = false;
  for (const std::string& name : names) {
    if (name.empty()) continue;
    ++filled;
    if (!IsUnit(name)) continue;
    ++units;
    sure = sure || name.size() > 1;
  }
  return filled > 0 && (units == filled || (sure && 2 * units >= filled));
}

}  // namespace tarnwick
