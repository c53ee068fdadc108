#include "app/save_as.h"

#include <algorithm>
#include <string_view>

#include "app/document.h"
#include "app/file_chooser.h"

namespace tarnwick {
namespace {

enum class Recent { No, Yes };

/// What an extension saves.
struct SaveKind {
  std::string_view extension;
  void (Document::*save)(const std::filesystem::path&);
  Recent recent;
};

constexpr SaveKind kSaveKinds[] = {
    {".dat", &Document::SaveDataFile, Recent::Yes},
    {".tgr", &Document::SaveGraphFile, Recent::Yes},
    {".ttp", &Document::SaveGraphFile, Recent::Yes},
    {".tds", &Document::SaveDataSetFile, Recent::No},
    {".wmf", &Document::SavePicture, Recent::No},
    {".bmp", &Document::SavePicture, Recent::No},
    {".jpg", &Document::SavePicture, Recent::No},
};

SaveProposal ProposalFor(const Document& document) {
  SaveProposal proposal;
  proposal.folder = document.DataFolder();
  proposal.graph_name = document.GraphFileName().stem();
  if (proposal.graph_name.empty()) proposal.graph_name = document.DataFileName().stem();
  if (const TSeries* series = document.Graph().CurrentSeries()) {
    std::string name = proposal.graph_name.string() + "_" + series->SeriesName();
    std::replace(name.begin(), name.end(), '/', '-');  // a name, not a folder
    proposal.data_set_name = name;
  }
  return proposal;
}

bool MayReplace(const std::filesystem::path& path, Prompt& prompt) {
  if (!std::filesystem::exists(path)) return true;
  const Question question{"File " + path.string() + " exists. Overwrite?",
                          {Answer::Yes, Answer::No},
                          Question::Kind::Warning};
  return prompt.Ask(question) == Answer::Yes;
}

}  // namespace

SaveOutcome SaveDocumentAs(Document& document, FileChooser& chooser, Prompt& prompt) {
  const auto path = chooser.FileToSave(ProposalFor(document));
  if (!path || !MayReplace(*path, prompt)) return {};
  const std::string extension = LowerExtension(*path);
  const auto* kind = std::find_if(std::begin(kSaveKinds), std::end(kSaveKinds),
                                  [&](const SaveKind& row) { return row.extension == extension; });
  if (kind == std::end(kSaveKinds)) return {};
  (document.*kind->save)(*path);
  return {true, kind->recent == Recent::Yes ? *path : std::filesystem::path()};
}

}  // namespace tarnwick
