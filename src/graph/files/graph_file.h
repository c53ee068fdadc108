// Graph files, templates and DataSet files: one layout, composed of the sections that the parts encode themselves. Knows
// the layout and the fixed texts; knows no dialog and no recent files.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "data/series/data_series_file.h"
#include "stream/section_writer.h"

namespace tarnwick {

class TxyGraph;

/// The version text that begins every graph of a file.
inline constexpr std::string_view kGraphMagic = "xyvk06.01";

struct GraphFileOptions {
  WithPoints points = WithPoints::Yes;  ///< templates are saved without
  WriterMode mode = WriterMode::Typed;  ///< Text: readable keys, for people and diff
  std::filesystem::path folder = {};    ///< of the file, from which sources are told; empty: none
};

/// The bytes of a whole graph file.
std::string EncodeGraph(const TxyGraph& graph, const GraphFileOptions& options = {});

/// Reads the bytes of a whole graph file into a new graph. `file_name` is for messages only. Throws FileError: the fixed
/// text ("Not a valid graph file", "Wrong Graph version", "reading error 1", …) first, file and place after it.
std::unique_ptr<TxyGraph> DecodeGraph(std::string_view bytes, std::string_view file_name);

/// Writes the file whole or not at all; its folder is what sources are told from. Throws FileError; the old file then stays.
void SaveGraph(const TxyGraph& graph, const std::filesystem::path& path,
               const GraphFileOptions& options = {});

/// Throws FileError when the file is missing, unreadable or damaged.
std::unique_ptr<TxyGraph> LoadGraph(const std::filesystem::path& path);

/// A DataSet file: the graph's layout with the DataSet `index` alone.
void SaveDataSetFile(const TxyGraph& graph, std::size_t index, const std::filesystem::path& path,
                     WriterMode mode = WriterMode::Typed);

/// Reads the first DataSet of a DataSet file into `target`'s current DataSet (a new one when it has none). Throws
/// FileError; `target` is then as it was.
void LoadDataSetFile(const std::filesystem::path& path, TxyGraph& target);

}  // namespace tarnwick
