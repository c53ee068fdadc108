#include "app/files/save_as.h"

#include <algorithm>
#include <string_view>

#include "desk/document/document.h"
#include "desk/prompts/file_chooser.h"
#include "graph/pictures/picture_export.h"

namespace tarnwick {
namespace {

enum class Recent { No, Yes };

/// What saving is done with.
struct SaveTask {
  Document& document;
  FileChooser& chooser;
  std::filesystem::path path;
};

/// What an extension saves; `save` answers false when the user changed his mind.
struct SaveKind {
  std::string_view extension;
  bool (*save)(const SaveTask&);
  Recent recent;
};

template <void (DocumentFiles::*kSave)(const std::filesystem::path&)>
bool SaveBy(const SaveTask& task) {
  (task.document.Files().*kSave)(task.path);
  return true;
}

/// The whole graph, as its window shows it unless another size is chosen.
bool SavePicture(const SaveTask& task) {
  constexpr double kScreenDpi = 96;
  const TxyGraph& shown = task.document.WholeGraph();
  PictureOptions proposal;
  proposal.width = std::max(1, shown.ClientWidth());
  proposal.height = std::max(1, shown.ClientHeight());
  const std::optional<PictureOptions> options = task.chooser.SizeOfPicture(proposal);
  if (!options) return false;
  // Inserted graphs have their places by the size of the whole.
  const double scale = kScreenDpi / options->dpi;
  TxyGraph graph;
  graph.Resize(qRound(options->width * scale), qRound(options->height * scale));
  graph.SetState(shown.State());
  WritePicture(graph, task.path, *options);
  return true;
}

constexpr SaveKind kSaveKinds[] = {
    {".dat", &SaveBy<&DocumentFiles::SaveDataFile>, Recent::Yes},
    {".tgr", &SaveBy<&DocumentFiles::SaveGraphFile>, Recent::Yes},
    {".ttp", &SaveBy<&DocumentFiles::SaveGraphFile>, Recent::Yes},
    {".tds", &SaveBy<&DocumentFiles::SaveDataSetFile>, Recent::No},
    {".wmf", &SavePicture, Recent::No},
    {".bmp", &SavePicture, Recent::No},
    {".jpg", &SavePicture, Recent::No},
    {".png", &SavePicture, Recent::No},
    {".gif", &SavePicture, Recent::No},
    {".svg", &SavePicture, Recent::No},
    {".pdf", &SavePicture, Recent::No},
};

SaveProposal ProposalFor(const Document& document) {
  SaveProposal proposal;
  proposal.folder = document.Files().DataFolder();
  proposal.graph_name = document.Files().GraphFileName().stem();
  if (proposal.graph_name.empty()) proposal.graph_name = document.Files().DataFileName().stem();
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
  if (!kind->save({document, chooser, *path})) return {};
  return {true, kind->recent == Recent::Yes ? *path : std::filesystem::path()};
}

}  // namespace tarnwick
