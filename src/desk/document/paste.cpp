#include "desk/document/paste.h"

#include <QByteArray>
#include <QMimeData>
#include <string>
#include <string_view>

#include "base/error.h"
#include "desk/document/document.h"
#include "desk/document/document_io.h"
#include "desk/document/graph_mime_data.h"
#include "desk/document/open_edit.h"
#include "graph/edit/paste_edit.h"
#include "graph/files/graph_file_reader.h"

namespace tarnwick {
namespace {

constexpr const char* kStep = "Paste";
constexpr const char* kClipboard = "clipboard";

void RequireSize(qsizetype bytes) {
  if (static_cast<std::size_t>(bytes) <= kLargestPaste) return;
  throw Error("There is too much on the clipboard: more than " +
              std::to_string(kLargestPaste >> 20) + " MB");
}

std::string_view View(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

bool PasteAsChild(Document& document, const QByteArray& bytes) {
  const GraphState pasted = ReadGraphState(View(bytes), kClipboard);
  OpenEdit step(document, kStep);
  const std::size_t child = PasteChild(document.WholeGraph(), pasted);
  step.Finish();
  document.SelectChild(child);
  return true;
}

bool PasteText(Document& document, const std::string& text) {
  try {
    return document.Files().AddData(kStep, [&text](const GraphState& into, Progress& progress) {
      return ReadDataText(into, text, kClipboard, progress);
    });
  } catch (const FileError& error) {
    throw Error("The text on the clipboard can not be plotted. " + std::string(error.what()));
  }
}

}  // namespace

bool Paste(Document& document, const QMimeData& data) {
  if (data.hasFormat(kGraphFormat)) {
    const QByteArray bytes = data.data(kGraphFormat);
    RequireSize(bytes.size());
    if (data.hasFormat(kChildGraphFormat)) return PasteAsChild(document, bytes);
    const QSize size(document.Graph().ClientWidth(), document.Graph().ClientHeight());
    return document.Files().AddData(kStep, [&bytes, size](const GraphState& into, Progress&) {
      return PastedGraph(into, ReadGraphState(View(bytes), kClipboard), size);
    });
  }
  const QString text = data.text();
  RequireSize(text.size());
  if (text.trimmed().isEmpty()) {
    throw Error("The clipboard holds nothing that can be pasted into a graph");
  }
  return PasteText(document, text.toStdString());
}

}  // namespace tarnwick
