#include "data/import/import_told.h"

#include <algorithm>
#include <string_view>

#include "base/word_list.h"
#include "data/import/whole_data.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostGroups = 3;
constexpr std::size_t kMostNames = 3;

/// A kind of clause: its words for one DataSet, empty for none, and how much of it there is.
struct Kind {
  ToldAbout about;
  std::string (*text)(const LoadReport& report);
  std::int64_t (*amount)(const LoadReport& report);
  const char* plural;  ///< of many DataSets with different words: "have skipped rows"
};

constexpr const char* kShowAPart = "show a part of their rows";

constexpr Kind kKinds[] = {
    {ToldAbout::Sampling, [](const LoadReport& r) { return r.ShownText(); },
     [](const LoadReport& r) -> std::int64_t { return r.sampled_every; }, kShowAPart},
    {ToldAbout::Skipping, [](const LoadReport& r) { return r.SkippedText(); },
     [](const LoadReport& r) { return r.Skipped(); }, "have skipped rows"},
    {ToldAbout::Replacing, [](const LoadReport& r) { return r.ReplacedText(); },
     [](const LoadReport& r) { return r.replaced; }, "have rows replaced by later ones"},
    {ToldAbout::UnusableErrors, [](const LoadReport& r) { return r.ErrorsText(); },
     [](const LoadReport& r) { return r.y_errors.All() + r.x_errors.All(); },
     "have rows without a usable error"},
    {ToldAbout::Moving, [](const LoadReport& r) { return r.MovedText(); },
     [](const LoadReport&) -> std::int64_t { return 1; }, "are read from elsewhere"},
    {ToldAbout::Runs, [](const LoadReport& r) { return r.RunsText(); },
     [](const LoadReport& r) -> std::int64_t { return r.runs; }, "are of several runs"},
    {ToldAbout::TableEnd, [](const LoadReport& r) { return r.LeftOutText(); },
     [](const LoadReport&) -> std::int64_t { return 1; }, "are of tables that end before the file"},
};

/// DataSets of which the same is said.
struct Group {
  std::string text;
  std::vector<std::string> names;  ///< in quotes
  std::int64_t amount = 0;
};

void AddToGroup(const std::string& text, const std::string& name, std::int64_t amount,
                std::vector<Group>& groups) {
  if (text.empty()) return;
  auto group = std::ranges::find(groups, text, &Group::text);
  if (group == groups.end()) group = groups.insert(group, {text, {}, amount});
  group->names.push_back('"' + name + '"');
}

std::vector<Group> GroupsOf(const Kind& kind, std::span<const LoadReport> reports,
                            std::span<const std::string> names) {
  std::vector<Group> groups;
  for (std::size_t i = 0; i < reports.size(); ++i) {
    if (reports[i].loaded)
      AddToGroup(kind.text(reports[i]), names[i], kind.amount(reports[i]), groups);
  }
  return groups;
}

void Tell(ToldAbout about, const char* plural, const std::vector<Group>& groups, std::size_t loaded,
          ImportTold& told) {
  if (groups.empty()) return;
  if (groups.size() == 1 && groups.front().names.size() == loaded) {
    told.push_back({about, groups.front().text});
    return;
  }
  if (groups.size() <= kMostGroups) {
    for (const Group& group : groups) {
      told.push_back({about, Listed(group.names, kMostNames) + ": " + group.text});
    }
    return;
  }
  std::size_t concerned = 0;
  for (const Group& group : groups) concerned += group.names.size();
  const auto most = std::ranges::max_element(groups, {}, &Group::amount);
  told.push_back({about, std::to_string(concerned) + " of " + std::to_string(loaded) +
                             " DataSets " + plural + ", most of all " +
                             Listed(most->names, kMostNames) + ": " + most->text});
}

ToldClause ClauseOf(const std::string& note) {
  ToldClause clause{ToldAbout::Guessing, WithoutOption(note)};
  if (const std::size_t begin = clause.text.size() + 2; begin < note.size()) {
    clause.option = note.substr(begin, note.size() - begin - 1);
  }
  return clause;
}

}  // namespace

std::string WithoutOption(const std::string& text) {
  return text.ends_with(')') ? text.substr(0, text.rfind(" (--")) : text;
}

ImportTold TellImport(std::span<const LoadReport> reports, std::span<const std::string> names,
                      std::span<const std::string> notes) {
  ImportTold told;
  const auto loaded = std::ranges::count_if(reports, &LoadReport::loaded);
  for (const Kind& kind : kKinds) {
    Tell(kind.about, kind.plural, GroupsOf(kind, reports, names), static_cast<std::size_t>(loaded),
         told);
  }
  for (const std::string& note : notes) told.push_back(ClauseOf(note));
  return told;
}

ImportTold TellSomeRows(std::span<const TDataSeries* const> all) {
  std::vector<Group> sampled, thinned;
  for (const TDataSeries* const series : all) {
    const TDSInfo& source = series->Source();
    AddToGroup(SomeRowsText(source), series->SeriesName(), source.RowSamplingFrequency,
               source.AllRows ? thinned : sampled);
  }
  ImportTold told;
  Tell(ToldAbout::Sampling, kShowAPart, sampled, all.size(), told);
  Tell(ToldAbout::Thinning, kShowAPart, thinned, all.size(), told);
  return told;
}

bool IsAbout(const ImportTold& told, ToldAbout about) {
  return std::ranges::find(told, about, &ToldClause::about) != told.end();
}

std::string Sentence(const ImportTold& told) {
  std::string sentence;
  for (const ToldClause& clause : told) sentence += (sentence.empty() ? "" : "; ") + clause.text;
  if (sentence.empty()) return sentence;
  if (sentence[0] >= 'a' && sentence[0] <= 'z')
    sentence[0] = static_cast<char>(sentence[0] - 'a' + 'A');
  return sentence + '.';
}

}  // namespace tarnwick
