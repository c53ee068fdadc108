// What the gallery shows: one graph a scene, with the reason it is worth looking at. Knows graphs and data; no files but
// those of examples/.
#pragma once

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include <QSizeF>

#include "graph/xy_graph.h"

namespace tarnwick::gallery {

/// Of every picture, in logical pixels.
inline constexpr QSizeF kSceneSize(560, 420);

struct Scene {
  std::string name;     ///< of the picture file, without extension
  std::string caption;  ///< on the contact sheet
  /// Fills a graph that is as large as the picture; `examples` is the folder of that name.
  std::function<void(TxyGraph& graph, const std::filesystem::path& examples)> build;
  double scale = 1;  ///< device pixels a logical one
};

/// The same graph at three scales, then amounts and kinds of data: one to many DataSets, sizes of values, axes, fits.
std::vector<Scene> DataScenes();
/// Everything that arranges a picture: legends, marks, inserted graphs, styles, captions instead of data.
std::vector<Scene> LookScenes();

// --- what the scenes are made of

/// A DataSet of these points.
TSeries& AddData(TxyGraph& graph, const std::string& name, std::span<const double> x,
                 std::span<const double> y);
/// A DataSet of `count` points of a function, from `from` to `to`.
TSeries& AddFunction(TxyGraph& graph, const std::string& name, double from, double to, int count,
                     const std::function<double(double)>& function);
/// Lines without symbols, or symbols without lines.
void ShowLines(TSeries& series, int width);
void ShowSymbols(TSeries& series, int size);
void SetTitles(TxyGraph& graph, const std::string& x, const std::string& y,
               const std::string& y2 = {});
/// The look of a freshly imported file.
void Finish(TxyGraph& graph, const std::string& title);

}  // namespace tarnwick::gallery
