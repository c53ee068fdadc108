#include "desk/document/refresh_documents.h"

#include <set>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/prompt.h"
#include "base/word_list.h"
#include "desk/document/document.h"
#include "desk/document/document_io.h"
#include "desk/prompts/password_prompt.h"
#include "desk/work/long_work.h"
#include "graph/series.h"
#include "graph/series_of_whole.h"
#include "sources/database/database_connection.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostNames = 5;

/// Before anything is read: nobody waits for the other sources only to be asked at their end.
void AskForPasswords(std::span<Document* const> documents) {
  std::set<std::string> servers = {""};  // of files
  for (Document* const document : documents) {
    for (const TSeries* const series : SeriesOfWhole(document->WholeGraph())) {
      if (series->Source().DataSource != DataSourceKind::Database) continue;
      try {
        const DatabasePlace place = PlaceOf(series->Source());
        if (!servers.insert(place.Server()).second) continue;
        RunWithPasswords(document->GetPrompt(), [&] {
          document->Work().Run({"Loading data"},
                               [&](Progress&) { const DatabaseConnection tried(place); });
        });
      } catch (const Error&) {
        // Told with the others when it is read.
      }
    }
  }
}

}  // namespace

bool MayReadAgain(std::span<Document* const> documents) {
  std::vector<std::string> edited;
  for (Document* const document : documents) {
    for (const TSeries* const series : SeriesOfWhole(document->WholeGraph())) {
      const SeriesAsRead* const read = document->Files().AsRead().Of(*series);
      const bool has_source = series->Source().DataSource != DataSourceKind::Manual;
      const bool changed = read != nullptr && !read->points.SharesAllWith(series->Points());
      if (!has_source || !(changed || series->Source().PointsEdited)) continue;
      edited.push_back('"' + series->SeriesName() + '"');
    }
  }
  if (edited.empty()) return true;
  const std::string text = "Points of " + Listed(edited, kMostNames) +
                           " were edited since they were read. Refreshing takes the edits back; "
                           "Undo brings them again.\n\nRefresh all the same?";
  return documents.front()->GetPrompt().Ask({text, {Answer::Yes, Answer::No}}) == Answer::Yes;
}

bool ReadDocumentsAgain(std::span<Document* const> documents) {
  AskForPasswords(documents);
  std::vector<GraphState> states;
  for (Document* const document : documents) states.push_back(document->WholeGraph().State());
  RefreshedGraphs refreshed;
  documents.front()->Work().Run({"Loading data"}, [&](Progress& progress) {
    refreshed = RefreshedTogether(states, progress);
  });
  if (refreshed.cancelled) return false;
  for (std::size_t i = 0; i < documents.size(); ++i) {
    const ReadResult& result = refreshed.graphs[i];
    // Of what could not be read again, what was told of it still holds.
    if (!result.points.empty()) documents[i]->Files().TakeRefreshed(result);
  }
  if (refreshed.troubles.empty()) return true;
  std::string text;
  for (const std::string& trouble : refreshed.troubles)
    text += (text.empty() ? "" : "\n") + trouble;
  documents.front()->GetPrompt().Tell(text);
  return true;
}

void RefreshDocuments(std::span<Document* const> documents) {
  if (MayReadAgain(documents)) ReadDocumentsAgain(documents);
}

}  // namespace tarnwick
