#include "verdicts/text_verdicts.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "data/column_caption.h"
#include "data/columns/error_names.h"
#include "data/columns/error_notation.h"
#include "data/ds_info.h"
#include "data/fields/complex_text.h"
#include "data/fields/field_kind.h"
#include "data/fields/field_value.h"
#include "data/fields/joined_time.h"
#include "data/fields/known_units.h"
#include "data/fields/row_remark.h"
#include "data/fields/si_unit.h"
#include "data/fields/text_fields.h"
#include "data/fields/unit_text.h"
#include "data/guess/time_names.h"
#include "data/names/argument_and_data.h"
#include "data/names/argument_names.h"
#include "data/names/name_words.h"
#include "data/names/names_frame.h"
#include "data/names/names_judge.h"
#include "data/names/names_line.h"
#include "data/names/number_names.h"
#include "data/names/stacked_names.h"

namespace tarnwick::testing {
namespace {

using Texts = std::vector<std::string>;

void Add(const std::string& word, std::string& text) {
  text += (text.empty() ? "" : ", ") + word;
}

std::string Bars(const Texts& texts) {
  std::string line;
  for (const std::string& text : texts)
    line += (line.empty() ? "" : "|") + (text.empty() ? "_" : text);
  return line;
}

/// Tabs, semicolons or commas part a line that has any, else blanks.
TextLayout LayoutFor(std::string_view line) {
  TDSInfo info;
  info.TextSeparators = " \t";
  for (const char* const separator : {"\t", ";", ","}) {
    if (line.find(separator) == line.npos) continue;
    info.TextSeparators = separator;
    info.MergeSeparators = false;
    break;
  }
  return {info, '\n'};
}

Texts FieldsOf(std::string_view line) {
  const TextLayout layout = LayoutFor(line);
  FieldCursor cursor(line, layout);
  Texts fields;
  while (const std::optional<std::string_view> field = cursor.Next())
    fields.push_back(NameText(*field, layout));
  return fields;
}

std::string NumberText(std::optional<double> value) {
  return value ? GeneralText(*value, 12) : "none";
}

}  // namespace

std::string FieldVerdict(const std::string& field) {
  constexpr std::array<const char*, 6> kKinds = {"empty",    "placeholder", "number",
                                                 "quantity", "date",        "text"};
  constexpr std::array<std::pair<const char*, ColumnFormat>, 12> kFormats = {
      {{"auto", ColumnFormat::Automatic},
       {"number", ColumnFormat::Number},
       {"comma", ColumnFormat::DecimalComma},
       {"date", ColumnFormat::DateTime},
       {"day first", ColumnFormat::DateDayFirst},
       {"month first", ColumnFormat::DateMonthFirst},
       {"thousands", ColumnFormat::GroupedThousands},
       {"unit", ColumnFormat::NumberWithUnit},
       {"seconds", ColumnFormat::UnixSeconds},
       {"milliseconds", ColumnFormat::UnixMilliseconds},
       {"scaled", ColumnFormat::ScaledUnit},
       {"error", ColumnFormat::Uncertainty}}};
  std::string verdict = kKinds[static_cast<std::size_t>(KindOfField(field))];
  if (IsColumnWidth(field)) Add("width", verdict);
  if (IsComplexNumber(field)) Add("complex", verdict);
  std::string last;
  for (const auto& [name, format] : kFormats) {
    const auto value = ValueOfField(field, format);
    if (!value) continue;
    const std::string text = NumberText(value);
    // What several formats in a row read alike is said once.
    verdict += text == last ? std::string("/") + name : std::string(", ") + name;
    if (text != last) verdict += " " + text;
    last = text;
  }
  return verdict;
}

std::string UnitVerdict(const std::string& text) {
  std::string verdict;
  if (const auto split = SplitUnit(text)) {
    Add(GeneralText(split->number), verdict);
    if (!split->unit.empty()) Add("\"" + std::string(split->unit) + "\"", verdict);
    if (split->uncertainty) Add("+- " + GeneralText(*split->uncertainty), verdict);
    if (split->joined) Add("joined", verdict);
  }
  const bool number = text.find_first_of("0123456789") == 0;
  if (!number && IsKnownUnit(text)) Add("known", verdict);
  if (const auto base = WithoutPrefix(text))
    Add(GeneralText(base->factor) + " " + std::string(base->base), verdict);
  if (IsBracketed(text)) Add("bracketed", verdict);
  if (UnitText(text) != text) Add("text \"" + UnitText(text) + "\"", verdict);
  return verdict.empty() ? "none" : verdict;
}

std::string LineVerdict(const std::string& line) {
  const Texts names = FieldsOf(line);
  std::string verdict;
  if (IsRule(line)) Add("rule", verdict);
  if (AreNames(names, line)) Add("names", verdict);
  if (AreNames(names, line, Preamble::None) != AreNames(names, line)) Add("names alone", verdict);
  if (AreSetting(names)) Add("setting", verdict);
  if (AreSymbols(names)) Add("symbols", verdict);
  if (AreTypes(names)) Add("types", verdict);
  if (AreUnits(names)) Add("units", verdict);
  if (AreNumbersAcross(names)) Add("across", verdict);
  if (AreEvenNumbersAcross(names)) Add("even", verdict);
  if (HoldRisingNumbers(names)) Add("rising", verdict);
  if (CountBetweenTexts(names)) Add("counts", verdict);
  if (BeginsWithOneNumber(names)) Add("one number", verdict);
  if (AreArgumentAndData(names)) Add("argument and data", verdict);
  return verdict.empty() ? "none" : verdict;
}

std::string CutVerdict(const std::string& line) {
  const TextLayout layout = LayoutFor(line);
  std::string verdict;
  for (int columns = 1; columns <= 6; ++columns) {
    for (const RowLabels labels : {RowLabels::Possible, RowLabels::Never, RowLabels::AtEnd}) {
      const auto names = SplitNames(line, layout, columns, labels);
      if (!names || (labels != RowLabels::Possible && SplitNames(line, layout, columns) == names))
        continue;
      const char* const how = labels == RowLabels::Never   ? " never"
                              : labels == RowLabels::AtEnd ? " at end"
                                                           : "";
      Add(std::to_string(columns) + how + " " + Bars(*names), verdict);
    }
  }
  return verdict.empty() ? "none" : verdict;
}

std::string ErrorVerdict(const std::string& name) {
  constexpr std::array<const char*, 4> kSigns = {"letter of letter", "function", "letter", "word"};
  std::string verdict;
  for (const ErrorReading& reading : ReadAsError(name)) {
    Add(std::string(kSigns[static_cast<std::size_t>(reading.sign)]) + " of " + reading.value +
            (reading.difference ? " or difference" : ""),
        verdict);
  }
  if (NamesErrors(name)) Add("error of \"" + Bars(ValueNamedIn(name)) + "\"", verdict);
  if (NamesDoubtfulErrors(name)) Add("doubtful", verdict);
  if (NamesRelative(name)) Add("relative", verdict);
  Texts beside = WordsBesideErr(name);
  if (!beside.empty()) Add("beside " + Bars(beside), verdict);
  if (!WordsBehindD(name).empty()) Add("behind d " + Bars(WordsBehindD(name)), verdict);
  if (ErrorsHeading(name) != name + " error") Add("heading " + ErrorsHeading(name), verdict);
  return verdict.empty() ? "none" : verdict;
}

std::string NameVerdict(const std::string& name) {
  constexpr std::array<const char*, 15> kParts = {
      "date",   "time",        "year",       "month",   "day",  "day of year", "hour",     "minute",
      "second", "hour minute", "year month", "quarter", "week", "am pm",       "year week"};
  const auto part = [&](std::optional<TimePart> before) -> std::string {
    const auto found = TimePartOfName(name, before);
    return found ? kParts[static_cast<std::size_t>(*found)] : "";
  };
  std::string verdict;
  if (NamesScan(name)) Add("scan", verdict);
  if (NamesTime(name)) Add("time", verdict);
  if (NamesPeriod(name)) Add("period", verdict);
  if (NamesArgument(name)) Add("argument", verdict);
  if (!part({}).empty()) Add("part " + part({}), verdict);
  for (const TimePart before :
       {TimePart::Hour, TimePart::Day, TimePart::DayOfYear, TimePart::Year}) {
    if (part(before) == part({})) continue;
    Add("behind " + std::string(kParts[static_cast<std::size_t>(before)]) + " " + part(before),
        verdict);
  }
  if (NameWithoutUnit(name) != name)
    Add("without unit " + std::string(NameWithoutUnit(name)), verdict);
  return verdict.empty() ? "none" : verdict;
}

std::string FrameVerdict(const std::string& line) {
  const TextLayout layout = LayoutFor(line);
  std::string verdict = "[" + std::string(WithoutFrame(line)) + "]";
  const auto add = [&](const char* what, std::string_view text) {
    if (text != line) Add(std::string(what) + " [" + std::string(text) + "]", verdict);
  };
  add("numbers", WithoutRemark(line, layout));
  add("words", WithoutRemark(line, layout, Before::Words));
  add("comment", WithoutCommentMarks(line, layout));
  return verdict;
}

std::string TimeVerdict(const std::string& parts) {
  const std::size_t colon = parts.find(": ");
  std::string entries;
  for (std::size_t at = 0; at < colon;) {
    const std::size_t end = std::min(parts.find(' ', at), colon);
    entries += (entries.empty() ? "" : "\t") + parts.substr(at, end - at) + ":c";
    at = end + 1;
  }
  const auto joined = JoinedTime::Parse(entries);
  if (!joined) return "no parts";
  std::vector<TimePart> kinds;
  for (const JoinedTime::Part& part : joined->parts) kinds.push_back(part.part);
  std::vector<std::string_view> texts;
  for (std::string_view rest = std::string_view(parts).substr(colon + 2);;) {
    const std::size_t bar = rest.find(" | ");
    texts.push_back(rest.substr(0, bar));
    if (bar == rest.npos) break;
    rest.remove_prefix(bar + 3);
  }
  const std::string first = NumberText(JoinTime(kinds, texts, ColumnFormat::DateTime));
  const std::string day_first = NumberText(JoinTime(kinds, texts, ColumnFormat::DateDayFirst));
  return first + (first == day_first ? "" : ", day first " + day_first);
}

std::string StackVerdict(const std::string& lines) {
  const std::size_t stroke = lines.find(" / ");
  const std::string upper = lines.substr(0, stroke);
  const std::string lower = lines.substr(stroke + 3);
  const TextLayout layout = LayoutFor(lower);
  std::string verdict;
  for (int columns = 1; columns <= 6; ++columns) {
    if (const auto names = StackNames(upper, lower, layout, columns))
      Add(std::to_string(columns) + " " + Bars(*names), verdict);
    if (const auto units = UnitsUnderNames(lower, upper, layout, columns))
      Add("units " + std::to_string(columns) + " " + Bars(*units), verdict);
    if (const auto units = UnitsOverRule(upper, lower, layout, columns))
      Add("ruled " + std::to_string(columns) + " " + Bars(*units), verdict);
  }
  return verdict.empty() ? "none" : verdict;
}

}  // namespace tarnwick::testing
