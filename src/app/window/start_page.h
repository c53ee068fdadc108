// What the workspace shows while no graph is open: New, Open, the last session, recent files with their pictures, shipped
// examples. Knows names of files and what it is told of them; opens and looks for none itself.
#pragma once

#include <QWidget>
#include <filesystem>
#include <map>
#include <vector>

class QGridLayout;
class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace tarnwick {

class RecentPictures;
class RecentTile;

class StartPage final : public QWidget {
  Q_OBJECT

 public:
  using Files = std::vector<std::filesystem::path>;

  /// `pictures`, which outlives the page, is asked for its recent files whenever they are seen.
  explicit StartPage(RecentPictures& pictures, QWidget* parent = nullptr);
  void ShowFiles(const Files& recent, const Files& examples);
  /// Offers to open the windows of the last session; 0: there are none.
  void OfferSession(int windows);
  /// As narrow as one column of tiles beside the examples.
  QSize minimumSizeHint() const override;

 signals:
  void newWanted();
  void openWanted();
  void sessionWanted();
  void fileChosen(const QString& path);

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildTiles();
  void BuildExamples();
  void LayOutTiles();
  RecentTile* TileOf(const QString& path) const;

  RecentPictures& pictures_;
  QPushButton* session_;
  QHBoxLayout* buttons_;
  QWidget* no_recent_;
  QGridLayout* tiles_;
  QVBoxLayout* examples_column_;
  Files recent_;
  Files examples_;
  std::vector<RecentTile*> shown_;  // one for each recent file
  std::map<QString, RecentTile*> by_path_;
  int columns_ = 0;
};

}  // namespace tarnwick
