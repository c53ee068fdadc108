// Draws the pictures of docs/gallery, to be looked at whenever something about drawing changes (./dev gallery).
// gallery FOLDER EXAMPLES [SCREENSHOT]: writes FOLDER/NAME.png of every scene and the sheet of all of them, the
// screenshot of a dark desktop included.
#include <QGuiApplication>
#include <QImageWriter>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>

#include "base/error.h"
#include "contact_sheet.h"
#include "graph/pictures/picture_export.h"
#include "scene.h"

namespace {

using namespace tarnwick;
using namespace tarnwick::gallery;

QImage Draw(const Scene& scene, const std::filesystem::path& examples) {
  TxyGraph graph;
  graph.Resize(qRound(kSceneSize.width()), qRound(kSceneSize.height()));
  scene.build(graph, examples);
  PictureOptions options;
  options.width = qRound(kSceneSize.width() * scene.scale);
  options.height = qRound(kSceneSize.height() * scene.scale);
  options.dpi = qRound(96 * scene.scale);
  return RenderImage(graph, options);
}

void Write(const QImage& image, const std::filesystem::path& path) {
  constexpr int kSmallestFile =
      0;  // the writer's quality of an image without loss is the size it may have
  QImageWriter writer(QString::fromStdString(path.string()), "png");
  writer.setQuality(kSmallestFile);
  if (!writer.write(image)) throw Error(path.string() + ": " + writer.errorString().toStdString());
}

void DrawAll(const std::filesystem::path& folder, const std::filesystem::path& examples,
             const std::filesystem::path& screenshot) {
  std::vector<Scene> scenes = DataScenes();
  for (const Scene& scene : LookScenes()) scenes.push_back(scene);
  std::vector<SheetPicture> scales;
  std::vector<SheetPicture> grid;
  for (const Scene& scene : scenes) {
    const QImage image = Draw(scene, examples);
    Write(image, folder / (scene.name + ".png"));
    const bool of_scales = scene.name.starts_with("scale-");
    (of_scales ? scales : grid).push_back({image, scene.caption});
  }
  if (!screenshot.empty()) {
    const QImage image(QString::fromStdString(screenshot.string()));
    if (image.isNull()) throw Error(screenshot.string() + " is no picture");
    grid.push_back({image, "Dark desktop"});
  }
  Write(MakeContactSheet(scales, grid, kSceneSize.toSize()), folder / "contact-sheet.png");
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc < 3 || argc > 4) {
    std::fputs("usage: gallery FOLDER EXAMPLES [SCREENSHOT]\n", stderr);
    return 2;
  }
  try {
    std::filesystem::create_directories(argv[1]);
    DrawAll(argv[1], argv[2], argc > 3 ? argv[3] : "");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "gallery: %s\n", error.what());
    return 1;
  }
  return 0;
}
