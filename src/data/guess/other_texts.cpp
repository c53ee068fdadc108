#include "data/guess/other_texts.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/fields/line_words.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"
#include "data/guess/drawn_texts.h"
#include "data/guess/uneven_texts.h"

namespace tarnwick {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kLinesLookedAt = 1000;
constexpr std::size_t kBytesLookedAt = 64 * 1024;
constexpr std::size_t kFewestAtoms = 2;
constexpr std::size_t kOddTwiceIn = 5;   // two rows in so many of another shape are no table
constexpr std::size_t kFewestLines = 5;  // that show what a text is

/// The first lines that are neither empty nor comments, without blanks at their ends.
Lines FirstLines(std::string_view text) {
  text = text.substr(0, kBytesLookedAt);
  LineWalker walker(text, text.find('\n') == text.npos ? '\r' : '\n');
  Lines lines;
  while (lines.size() < kLinesLookedAt && !walker.AtEnd()) {
    const std::string_view line = TrimBlankBytes(walker.Next());
    if (!line.empty() && line.front() != '#') lines.push_back(line);
  }
  return lines;
}

bool IsWhole(std::string_view text) {
  return ParseInteger(text).has_value();
}

bool IsReal(std::string_view text) {
  return text.find('.') != text.npos && ParseNumber(text).has_value();
}

/// "C", "Na", "CL", "H12": a symbol of one or two letters, and which of its kind.
bool IsElement(std::string_view text) {
  if (text.empty() || text.front() < 'A' || text.front() > 'Z') return false;
  const std::size_t letters = text.size() > 1 && IsLetter(text[1]) ? 2 : 1;
  return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(letters), text.end(), IsDigit);
}

/// "C  0.00  1.39  0.00"
bool IsAtom(std::string_view line) {
  const std::vector<LineWord> words = WordsOfLine(line);
  return words.size() >= 4 && IsElement(words[0].text) && IsReal(words[1].text) &&
         IsReal(words[2].text) && IsReal(words[3].text);
}

/// A number of atoms, a remark, and as many lines of an element at its place, several times for frames of a motion.
bool ListsAtoms(const Lines& lines) {
  if (lines.size() < kFewestAtoms + 1 || !IsWhole(lines.front())) return false;
  const auto first =
      std::find_if(lines.begin() + 1, std::min(lines.begin() + 3, lines.end()), &IsAtom);
  if (first == lines.end()) return false;
  const auto atoms = std::count_if(first, lines.end(), &IsAtom);
  return 2 * atoms > std::ssize(lines) &&
         (atoms == ParseInteger(lines.front()) || std::ssize(lines) > atoms + 2 ||
          lines.size() == kLinesLookedAt);
}

/// "C", "NA", by the letters of a chemical element.
bool IsSymbol(std::string_view text) {
  constexpr std::string_view kSymbols =
      " H He Li Be B C N O F Ne Na Mg Al Si P S Cl Ar K Ca Sc Ti V Cr Mn Fe Co Ni Cu Zn Ga Ge As "
      "Se Br Kr Rb Sr Y Zr Nb Mo Tc Ru Rh Pd Ag Cd In Sn Sb Te I Xe Cs Ba La Ce Pr Nd Sm Eu Gd Tb "
      "Dy Ho Er Tm Yb Lu Hf Ta W Re Os Ir Pt Au Hg Tl Pb Bi Th U ";
  std::string symbol = LowerAscii(text);
  if (symbol.empty() || symbol.size() > 2) return false;
  symbol.front() = text.front();
  return kSymbols.find(' ' + symbol + ' ') != kSymbols.npos;
}

/// Such lines and no others of numbers, within a text that tells a program what to compute of them.
bool ListsAtomsWithinText(const Lines& lines, const TextFormat& format) {
  constexpr std::size_t kWords = 4;
  const auto is_bare = [](std::string_view line) {
    const std::vector<LineWord> words = WordsOfLine(line);
    return words.size() == kWords && IsSymbol(words.front().text) && IsAtom(line);
  };
  const auto first = std::ranges::find_if(lines, is_bare);
  const auto atoms = static_cast<std::size_t>(std::count_if(first, lines.end(), is_bare));
  if (atoms < kFewestAtoms || atoms + 1 < format.table_rows || atoms == lines.size()) return false;
  return first == lines.begin() || WordsOfLine(*(first - 1)).size() != kWords;
}

/// A title, a number of atoms, and their lines "1SOL  OW  1  0.126  1.624  1.679".
bool ListsResidues(const Lines& lines) {
  if (lines.size() < 3 || !IsWhole(lines[1])) return false;
  const std::vector<LineWord> words = WordsOfLine(lines[2]);
  if (words.size() < 5 || !IsDigit(words.front().text.front())) return false;
  const std::string_view residue = words.front().text;
  const std::size_t letters = residue.find_first_not_of("0123456789");
  const auto reals =
      std::ranges::count_if(words, [](const LineWord& word) { return IsReal(word.text); });
  return letters != residue.npos && IsLetter(residue[letters]) && reals >= 3;
}

/// Orbits of satellites: two lines each, which begin with 1 and 2.
bool ListsOrbits(const Lines& lines) {
  constexpr std::size_t kShortest = 60, kLongest = 75;
  const auto is_line = [](std::string_view line, char number) {
    return line.size() >= kShortest && line.size() <= kLongest && line.front() == number &&
           line[1] == ' ';
  };
  std::size_t pairs = 0;
  for (std::size_t i = 1; i < lines.size(); ++i) {
    pairs += is_line(lines[i - 1], '1') && is_line(lines[i], '2') ? 1 : 0;
  }
  return pairs > 0 && 3 * (pairs + 1) > lines.size();
}

/// "wavelength", but not the letter of "8.7e+05".
bool HoldsWord(std::string_view line) {
  constexpr std::string_view kBetween = " ;,";
  while (!line.empty()) {
    const std::string_view part = line.substr(0, line.find_first_of(kBetween));
    if (std::ranges::any_of(part, &IsLetter) && !ParseNumber(part)) return true;
    line.remove_prefix(std::min(part.size() + 1, line.size()));
  }
  return false;
}

/// "Point(1) = {0, 0};", "module test() {", "NDims = 3": statements and settings, which hold letters, but no rows of a table
/// whose text ends so.
bool IsStatement(std::string_view line) {
  if (line.find('\t') != line.npos || std::ranges::count(line, ';') > 2) return false;
  if (!HoldsWord(line)) return false;
  const char last = line.back();
  if (last == ';' || last == '{' || last == '}') return true;
  const std::size_t equals = line.find('=');
  if (equals == line.npos || equals == 0 || !IsLetter(line.front())) return false;
  const std::string_view key = TrimBlankBytes(line.substr(0, equals));
  return key.find_first_of(" ,;|") == key.npos;
}

/// Marks part every line into as many fields, and numbers follow each other in all of them as in no statement, or one ends them:
/// "1A,Sov Mil Order,246,EU,15,28;".
bool IsPartedEvenly(const Lines& lines, std::string_view row, const TextFormat& format) {
  constexpr std::size_t kFewestColumns = 4;
  if (!format.is_table || format.odd_rows > 0 || format.separators.find(' ') != std::string::npos ||
      format.columns.size() < 2 || lines.size() < kFewestLines ||
      row.find_first_of("{}") != row.npos || row.find(" = ") != row.npos) {
    return false;
  }
  const auto numbers =
      static_cast<std::size_t>(std::ranges::count_if(format.columns, &ColumnGuess::has_numbers));
  const bool ends = format.columns.back().has_numbers && !format.columns.front().has_numbers;
  return numbers >= kFewestColumns || ends;
}

/// The first row of what looks like a table is a statement itself, and so are most lines; or it stands in a block ("A = matrix
/// {"), as rows do between a third of statements.
bool IsProgram(const Lines& lines, std::string_view first_row, const TextFormat& format) {
  const auto row = std::ranges::find(lines, first_row);
  const bool in_block = row != lines.end() && row != lines.begin() && (row - 1)->ends_with('{') &&
                        IsStatement(*(row - 1));
  if (first_row.empty() || (!in_block && !IsStatement(first_row))) return false;
  if (!in_block && IsPartedEvenly(lines, first_row, format)) return false;
  const auto closes = [](std::string_view line) {
    return line.find_first_not_of("{}(); ") == line.npos;
  };
  const auto statements = static_cast<std::size_t>(std::ranges::count_if(
      lines, [&](std::string_view line) { return IsStatement(line) || closes(line); }));
  return lines.size() >= kFewestLines &&
         (5 * statements >= 3 * lines.size() || (in_block && 3 * statements >= lines.size()));
}

/// At least half of the lines begin with one of these words.
template <std::size_t Count>
bool MostlyBegin(const Lines& lines, const std::string_view (&words)[Count]) {
  const auto begins = [&words](std::string_view line) {
    return std::ranges::any_of(words, [line](std::string_view word) {
      return line.starts_with(word) && (line.size() == word.size() || !IsLetter(line[word.size()]));
    });
  };
  return !lines.empty() &&
         2 * static_cast<std::size_t>(std::ranges::count_if(lines, begins)) >= lines.size();
}

bool HoldsLine(const Lines& lines, std::string_view begins) {
  return std::ranges::any_of(lines,
                             [begins](std::string_view line) { return line.starts_with(begins); });
}

bool IsMolecule(const Lines& lines, const TextFormat& format) {
  constexpr std::string_view kRecords[] = {"ATOM", "HETATM", "CONECT", "ANISOU", "REMARK"};
  const bool records = HoldsLine(lines, "ATOM  ") || HoldsLine(lines, "HETATM");
  const bool table = std::ranges::any_of(lines, [](std::string_view line) {
    return line.ends_with("V2000") || line.ends_with("V3000");
  });
  return ListsAtoms(lines) || ListsResidues(lines) || ListsAtomsWithinText(lines, format) ||
         (records && MostlyBegin(lines, kRecords)) || table;
}

bool IsMesh(const Lines& lines) {
  constexpr std::string_view kObj[] = {"v", "vn", "vt", "f"};
  constexpr std::string_view kFacets[] = {"facet", "outer", "vertex", "endloop", "endfacet"};
  const bool obj = HoldsLine(lines, "v ") && MostlyBegin(lines, kObj);
  const bool faces =
      HoldsLine(lines, "f ") || HoldsLine(lines, "vn ") || lines.size() == kLinesLookedAt;
  const std::string_view first = lines.empty() ? std::string_view() : lines.front();
  return (obj && faces) || MostlyBegin(lines, kFacets) || first == "OFF" || first == "COFF" ||
         first == "ply" || first.starts_with("AC3D");
}

/// "$GPGGA,092750.000,5321.6802,N": most lines are such.
bool ListsSentences(const Lines& lines) {
  constexpr std::size_t kName = 6;  // "$GPGGA"
  const auto is_sentence = [](std::string_view line) {
    return line.size() > kName && (line.front() == '$' || line.front() == '!') &&
           line[kName] == ',' && std::all_of(line.begin() + 1, line.begin() + kName, [](char c) {
             return (c >= 'A' && c <= 'Z') || IsDigit(c);
           });
  };
  const auto sentences = static_cast<std::size_t>(std::ranges::count_if(lines, is_sentence));
  return sentences >= kFewestLines && 2 * sentences >= lines.size();
}

/// "[256, 512)   12 |@@@@@     |": bars drawn in characters, on as many lines as the table has rows, or half of these.
bool DrawsBars(const Lines& lines, const TextFormat& format) {
  const auto is_bar = [](std::string_view line) {
    const std::size_t begin = line.find('|');
    if (begin == line.npos || begin + 2 >= line.size() || line.back() != '|') return false;
    const std::string_view bar = line.substr(begin + 1, line.size() - begin - 2);
    return bar.find_first_not_of("@*# ") == bar.npos && bar.find_first_not_of(' ') != bar.npos;
  };
  const auto bars = static_cast<std::size_t>(std::ranges::count_if(lines, is_bar));
  return format.is_table && bars >= kFewestLines && 2 * bars >= format.table_rows;
}

/// Lists of many lengths below lines of text, which head them: of towns the distances to all others.
bool ListsBelowTexts(const Lines& lines, const TextFormat& format) {
  constexpr std::size_t kShare = 8;  // of the rows are odd, of the lines are texts
  constexpr std::size_t kFewestHeads = 4;
  const bool blanks = format.separators.find(' ') != std::string::npos;
  if (!format.is_table || !blanks || !format.column_cuts.empty() ||
      kShare * format.odd_rows < format.table_rows) {
    return false;
  }
  std::size_t texts = 0;
  std::size_t heads = 0;
  bool text_before = true;
  for (const std::string_view line : lines) {
    const std::vector<LineWord> words = WordsOfLine(line);
    const bool numbers = std::ranges::all_of(
        words, [](const LineWord& word) { return ParseNumber(word.text).has_value(); });
    texts += numbers ? 0 : 1;
    heads += numbers && text_before ? 1 : 0;
    text_before = !numbers;
  }
  return heads >= kFewestHeads && kShare * texts > lines.size() &&
         kShare * heads > texts * (kShare - 1);
}

/// Texts that are told by how they begin and what they hold.
struct OtherText {
  std::string_view begins;
  std::string_view holds;
  const char* why;
};

constexpr OtherText kOtherTexts[] = {
    {"##", "##NTUPLES",
     "This is JCAMP-DX of several tables (NTUPLES), which cannot be read; save it as X and Y in "
     "two columns"},
    {">HEAD", ">FREQ",
     "This is EDI, whose values go over several lines, which cannot be read; convert them to "
     "columns"},
    {"$GP", "GGA,", "These are sentences of a receiver (NMEA), no table; convert them to columns"},
    {"$GN", "GGA,", "These are sentences of a receiver (NMEA), no table; convert them to columns"},
    {"ISO-10303-21", "DATA;", "This is a STEP file of bodies, no table of numbers"},
    {"<?xml", "", "This is XML, which cannot be read; save or export it as columns of text"},
    {"<!DOCTYPE", "", "This is a page (HTML or XML), which cannot be read; save it as text"},
    {"<html", "", "This is a page (HTML), which cannot be read; save its table as text"},
    {"%!PS", "", "This is PostScript, a page to print, no table of numbers"},
    {"{", "\":", "This is JSON, which cannot be read; save or export it as columns of text"},
    {"[", "\":", "This is JSON, which cannot be read; save or export it as columns of text"},
    {"", "FoamFile\n{", "This file belongs to a simulation (FoamFile), and is no table of numbers"},
    {"TITL", "\nCELL ",
     "These are the instructions of a crystal's refinement, no table of numbers"},
    {"!Header ", "\n!Atoms ",
     "The file holds the atoms of molecules and where they lie, no table of measured values"},
    {"", "@<TRIPOS>ATOM",
     "The file holds the atoms of molecules and where they lie, no table of measured values"},
    {"netcdf ", "dimensions:",
     "This is a dump of netCDF (CDL), whose values stand in lists; open the netCDF file itself"},
    {"", "IONEX VERSION / TYPE",
     "These are maps of the ionosphere (IONEX), no table; convert them to columns"},
    {"", "RINEX VERSION / TYPE",
     "These are records of satellites (RINEX) below a head of their own, no table; convert them to "
     "columns"},
    {"#a", "\n*  2", "These are the orbits of satellites (SP3), records below epochs, no table"},
    {"#c", "\n*  2", "These are the orbits of satellites (SP3), records below epochs, no table"},
    {"#d", "\n*  2", "These are the orbits of satellites (SP3), records below epochs, no table"},
    {"0\n", "\nSECTION\n", "This is a drawing (DXF), no table of numbers"},
    {"0\r\n", "\r\nSECTION\r\n", "This is a drawing (DXF), no table of numbers"},
    {"LAMMPS data file", " atoms", "These are the atoms of a simulation, no table of numbers"},
};

/// The first line with anything in it behind the headers.
std::string_view RowAt(std::string_view text, std::int32_t headers) {
  LineWalker walker(text, text.find('\n') == text.npos ? '\r' : '\n');
  while (!walker.AtEnd()) {
    const std::string_view line = TrimBlankBytes(walker.Next());
    if (--headers < 0 && !line.empty()) return line;
  }
  return {};
}

/// Rows between blanks that have now so many fields and now others. Where separators count, some may leave out their ends.
bool IsRagged(const TextFormat& format) {
  const bool blanks = format.separators.find(' ') != std::string::npos;
  return blanks && format.column_cuts.empty() &&
         kOddTwiceIn * format.odd_rows > 2 * format.table_rows;
}

}  // namespace

std::string WhyNoTable(std::string_view text, const TextFormat& format, TableBy by) {
  const Lines lines = FirstLines(text);
  if (ContinueAtStrokes(lines)) {
    return "Each record of this file goes over several lines, which end in \"\\\"; such files "
           "cannot "
           "be read";
  }
  std::string_view head = text.substr(0, kBytesLookedAt);
  head.remove_prefix(std::min(head.find_first_not_of(" \t\r\n"), head.size()));
  for (const OtherText& other : kOtherTexts) {
    if (head.starts_with(other.begins) && head.find(other.holds) != head.npos) return other.why;
  }
  if (by == TableBy::User) return {};
  if (IsMolecule(lines, format)) {
    return "The file holds the atoms of molecules and where they lie, no table of measured values";
  }
  if (IsMesh(lines)) {
    return "The file holds the corners and faces of bodies, no table of measured values";
  }
  if (ListsOrbits(lines)) {
    return "The file holds the orbits of satellites, two lines each, no table of numbers";
  }
  // Of "t=0 U=0.5" below each other the words part the numbers.
  const bool worded = format.separators.find('=') != std::string::npos;
  if (!worded && IsProgram(lines, RowAt(text, format.header_lines), format)) {
    return "The file holds the statements of a program or its settings, no table of numbers";
  }
  if (ListsSentences(lines)) {
    return "These are sentences of a receiver (NMEA), no table; convert them to columns";
  }
  if (AreBytesInHexadecimal(lines)) {
    return "The file holds bytes in hexadecimal digits, which are no values; convert them to "
           "columns";
  }
  if (AreListsUnderKeys(lines)) {
    return "The file holds lists of numbers in brackets, each under its key, no table";
  }
  if (IsRagged(format)) {
    return "The file holds no table of numbers: two in five of its rows or more have another "
           "number of columns than the others";
  }
  if (ContinueBehindPlus(lines)) {
    return "Each record of this file goes over several lines, which begin with \"+\"; such files "
           "cannot be read";
  }
  if (AreListsOfManyLengths(lines, format)) {
    return "Each line of this file is a list of its own length, no row of a table";
  }
  if (DrawsBars(lines, format)) {
    return "The file holds bars drawn in characters within a text, no table of numbers";
  }
  if (format.is_table && DrawCurve(lines, format.table_rows)) {
    return "The file holds a curve drawn in characters, no table of numbers";
  }
  if (ListShapes(lines)) {
    return "The file holds shapes of a picture, each a list of its own length, no table of numbers";
  }
  if (ListsBelowTexts(lines, format)) {
    return "The file holds lists of many lengths below lines of text, no table of numbers";
  }
  return {};
}

}  // namespace tarnwick
