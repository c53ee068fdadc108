#include "data/guess/other_texts.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/ascii.h"
#include "base/number_text.h"
#include "data/text/line_words.h"
#include "data/text/text_fields.h"
#include "data/text/text_lines.h"

namespace tarnwick {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kLinesLookedAt = 1000;
constexpr std::size_t kBytesLookedAt = 64 * 1024;
constexpr std::size_t kContinuedLines = 2;  // that make sure
constexpr std::size_t kFewestAtoms = 2;
constexpr std::size_t kOddShare = 2;  // one row in so many of another shape is no table

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

/// Lines end in a stroke that says "the record goes on": beyond a table of one row a line.
bool ContinuesLines(const Lines& lines) {
  const auto continued =
      static_cast<std::size_t>(std::ranges::count_if(lines, [](std::string_view line) {
        return line.ends_with('\\') && !line.ends_with("\\\\");  // two end a row that is typeset
      }));
  return continued >= kContinuedLines && 2 * continued >= lines.size();
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

bool IsMolecule(const Lines& lines) {
  constexpr std::string_view kRecords[] = {"ATOM", "HETATM", "CONECT", "ANISOU", "REMARK"};
  const bool records = HoldsLine(lines, "ATOM  ") || HoldsLine(lines, "HETATM");
  const bool table = std::ranges::any_of(lines, [](std::string_view line) {
    return line.ends_with("V2000") || line.ends_with("V3000");
  });
  return ListsAtoms(lines) || (records && MostlyBegin(lines, kRecords)) || table;
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
};

/// Rows between blanks that have now so many fields and now others. Where separators count, some may leave out their ends.
bool IsRagged(const TextFormat& format) {
  const bool blanks = format.separators.find(' ') != std::string::npos;
  return blanks && format.column_cuts.empty() && kOddShare * format.odd_rows > format.table_rows;
}

}  // namespace

std::string WhyNoTable(std::string_view text, const TextFormat& format, TableBy by) {
  const Lines lines = FirstLines(text);
  if (ContinuesLines(lines)) {
    return "Each record of this file goes over several lines, which end in \"\\\"; such files "
           "cannot "
           "be read";
  }
  const std::string_view head = text.substr(0, kBytesLookedAt);
  for (const OtherText& other : kOtherTexts) {
    if (head.starts_with(other.begins) && head.find(other.holds) != head.npos) return other.why;
  }
  if (by == TableBy::User) return {};
  if (IsMolecule(lines)) {
    return "The file holds the atoms of molecules and where they lie, no table of measured values";
  }
  if (IsMesh(lines)) {
    return "The file holds the corners and faces of bodies, no table of measured values";
  }
  if (IsRagged(format)) {
    return "The file holds no table of numbers: more than half of its rows have another number of "
           "columns than the others";
  }
  return {};
}

}  // namespace tarnwick
