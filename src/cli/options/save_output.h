// OUT on the command line: where a graph goes, by extension, whole or not at all.
#pragma once

#include <string>

#include "cli/output/output.h"
#include "graph/xy_graph.h"
#include "stream/section_writer.h"

namespace tarnwick::cli {

class Command;

struct SaveArguments {
  std::string file;  ///< empty: nothing is saved; "-": text to standard output
  bool overwrite = false;
  bool text_mode = false;

  bool Wanted() const { return !file.empty(); }
  WriterMode Mode() const { return text_mode ? WriterMode::Text : WriterMode::Typed; }
};

/// True when what is saved keeps how the graph looks.
bool KeepsLook(const SaveArguments& arguments);

/// Declares -o and --overwrite.
void AddSave(Command& command, SaveArguments& arguments);

/// Throws Error when `file` exists and may not be overwritten.
void CheckOverwrite(const SaveArguments& arguments);

/// Throws Error, before any work, when SaveOutput cannot write a file of this kind or may not overwrite it.
void CheckSave(const SaveArguments& arguments);

/// Writes what a file with this ending keeps of the graph (where it keeps one DataSet, `series`); to standard output the
/// points separated by commas, in text mode the whole graph. Throws Error for pictures and unknown endings, or when standard
/// output takes no more.
void SaveOutput(const TxyGraph& graph, std::size_t series, const SaveArguments& arguments,
                Output& output);

/// The document of a command whose whole answer is the saved file; nothing as text.
void PrintSaved(const SaveArguments& arguments, Output& output);

}  // namespace tarnwick::cli
