#include "app/files/load_place.h"

#include <string>
#include <system_error>

#include "desk/document/document.h"
#include "graph/files/file_kinds.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

bool ReplacesGraph(const std::filesystem::path& path) {
  const FileHolds holds = KindToRead(path).holds;
  return holds == FileHolds::Graph || holds == FileHolds::Template;
}

bool IsItsOwn(const DocumentFiles& files, const std::filesystem::path& path) {
  std::error_code ignored;  // a file that is gone is nobody's
  return std::filesystem::equivalent(files.ReloadedFrom(), path, ignored);
}

bool IsBlank(const Document& document) {
  const TxyGraph& graph = document.WholeGraph();
  return document.Files().GraphFileName().empty() && !HasPoints(graph) && graph.Children().empty();
}

}  // namespace

Question ReloadQuestion(const Document& document) {
  std::string text = "This will discard all changes. Reload " + document.Name() + " ?";
  if (!document.History().Changed()) text += "\n\n" + document.Files().LossUnchanged();
  return {text, {Answer::Yes, Answer::No}};
}

LoadPlace ChooseLoadPlace(const Document& document, const std::filesystem::path& path,
                          Prompt& prompt) {
  // An inserted graph is replaced in a step that can be undone.
  if (!ReplacesGraph(path) || document.SelectedChild()) return LoadPlace::Here;
  const DocumentFiles& files = document.Files();
  const bool loses = files.ClosingLoses();
  if (IsItsOwn(files, path)) {
    const bool agreed = !loses || prompt.Ask(ReloadQuestion(document)) == Answer::Yes;
    return agreed ? LoadPlace::Here : LoadPlace::Nowhere;
  }
  if (!loses && IsBlank(document)) return LoadPlace::Here;
  const Question question{"Loading \"" + path.filename().string() + "\" " +
                              (loses ? "discards all changes in " : "takes the place of ") +
                              document.Name() + ". Open it in a window of its own instead?",
                          {Answer::Yes, Answer::No, Answer::Cancel}};
  switch (prompt.Ask(question)) {
    case Answer::Yes:
      return LoadPlace::OwnWindow;
    case Answer::No:
      return LoadPlace::Here;
    default:
      return LoadPlace::Nowhere;
  }
}

}  // namespace tarnwick
