#include "app/files/save_as.h"

#include <algorithm>
#include <system_error>

#include "data/import/source_place.h"
#include "desk/document/document.h"
#include "desk/prompts/file_chooser.h"
#include "desk/prompts/file_trouble.h"
#include "graph/axes/plot_metrics.h"
#include "graph/files/file_kinds.h"
#include "graph/layout/automatic_legend.h"
#include "graph/series_of_whole.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

using Path = std::filesystem::path;

/// As the window shows it.
PictureOptions PictureOf(const TxyGraph& shown) {
  PictureOptions picture;
  picture.width = std::max(1, shown.ClientWidth());
  picture.height = std::max(1, shown.ClientHeight());
  return picture;
}

/// The whole graph, as its window shows it unless another size is chosen; false when the user changed his mind.
bool SavePicture(const Document& document, FileChooser& chooser, const Path& path) {
  constexpr double kScreenDpi = 96;
  const TxyGraph& shown = document.WholeGraph();
  const std::optional<PictureOptions> options = chooser.SizeOfPicture(PictureOf(shown));
  if (!options) return false;
  // Inserted graphs have their places by the size of the whole.
  const double scale = kScreenDpi / options->dpi;
  TxyGraph graph;
  graph.Resize(qRound(options->width * scale), qRound(options->height * scale));
  graph.SetState(shown.State());
  const QSize size(graph.ClientWidth(), graph.ClientHeight());
  if (size != QSize(shown.ClientWidth(), shown.ClientHeight()))
    SettleLegend(graph, size, TextMetrics());
  WritePicture(graph, path, *options);
  return true;
}

/// False when nothing was written.
bool Save(Document& document, FileChooser& chooser, const Path& path) {
  const FileKind& kind = KindOf(path);
  if (!kind.write) return false;
  switch (kind.holds) {
    case FileHolds::Graph:
    case FileHolds::Template:
      document.Files().SaveGraphFile(path);
      return true;
    case FileHolds::DataSet:
      document.Files().SaveDataSetFile(path);
      return true;
    case FileHolds::Table:
      document.Files().SaveDataFile(path);
      return true;
    case FileHolds::Picture:
      return SavePicture(document, chooser, path);
    case FileHolds::FitFunction:
      return false;
  }
  return false;
}

bool AreSame(const Path& one, const Path& other) {
  std::error_code ignored;  // what is not there is no other file
  return !one.empty() && !other.empty() && std::filesystem::equivalent(one, other, ignored);
}

/// Two windows of one file would write over each other's graph.
bool TellIfShown(const Path& path, const Document& document, const std::vector<Document*>& open,
                 Prompt& prompt) {
  const auto shows = [&](const Document* other) {
    return other != &document && AreSame(other->Files().GraphFileName(), path);
  };
  const auto other = std::ranges::find_if(open, shows);
  if (other == open.end() || KindOf(path).holds != FileHolds::Graph) return false;
  prompt.Tell((*other)->Name() + " shows " + path.string() +
              ". Close that window first, or choose another name.");
  return true;
}

/// What a source of the data holds beside what is shown of it.
std::string LostBy(const Path& path, Document& document) {
  const std::vector<TSeries*> all = SeriesOfWhole(document.WholeGraph());
  const auto is_source = [&](const TSeries* series) {
    return AreSame(SourcePlace(series->Source()), path);
  };
  if (std::ranges::none_of(all, is_source)) return {};
  return "The data come from it: its rows, columns and remarks that the graph does not show would "
         "be lost.";
}

SaveProposal ProposalFor(const Document& document) {
  SaveProposal proposal;
  proposal.folder = document.Files().DataFolder();
  proposal.graph_name = document.Files().GraphFileName().stem();
  if (proposal.graph_name.empty())
    proposal.graph_name = NameOfData(document.Files().DataFileName());
  if (const TSeries* series = document.Graph().CurrentSeries()) {
    std::string name = proposal.graph_name.string() + "_" + series->SeriesName();
    std::replace(name.begin(), name.end(), '/', '-');  // a name, not a folder
    proposal.data_set_name = name;
  }
  proposal.picture = PictureOf(document.WholeGraph());
  return proposal;
}

}  // namespace

SaveOutcome SaveDocumentAs(Document& document, const std::vector<Document*>& open,
                           FileChooser& chooser, Prompt& prompt) {
  const auto path = chooser.FileToSave(ProposalFor(document));
  if (!path || TellIfShown(*path, document, open, prompt)) return {};
  if (!MayReplace(*path, prompt, LostBy(*path, document))) return {};
  if (!Save(document, chooser, *path)) return {};
  const FileKind& kind = KindOf(*path);
  SaveOutcome outcome;
  outcome.saved = true;
  if (kind.remembered == Remembered::Always) outcome.recent = *path;
  if (kind.leaves_out) outcome.left_out = kind.leaves_out(document.WholeGraph());
  return outcome;
}

}  // namespace tarnwick
