#include "desk/document/refresh_documents.h"

#include <string>
#include <vector>

#include "base/prompt.h"
#include "desk/document/document.h"
#include "desk/document/document_io.h"
#include "desk/work/long_work.h"

namespace tarnwick {

void RefreshDocuments(std::span<Document* const> documents) {
  std::vector<GraphState> states;
  for (Document* const document : documents) states.push_back(document->WholeGraph().State());
  RefreshedGraphs refreshed;
  documents.front()->Work().Run({"Loading data"}, [&](Progress& progress) {
    refreshed = RefreshedTogether(states, progress);
  });
  if (refreshed.cancelled) return;
  for (std::size_t i = 0; i < documents.size(); ++i)
    documents[i]->Files().TakeRefreshed(refreshed.graphs[i]);
  if (refreshed.troubles.empty()) return;
  std::string text;
  for (const std::string& trouble : refreshed.troubles)
    text += (text.empty() ? "" : "\n") + trouble;
  documents.front()->GetPrompt().Tell(text);
}

}  // namespace tarnwick
