// What the workspace shows while no graph is open: New, Open, recent files, shipped examples. Knows names of files, opens
// none itself.
#pragma once

#include <QWidget>
#include <filesystem>
#include <vector>

class QVBoxLayout;

namespace tarnwick {

class StartPage final : public QWidget {
  Q_OBJECT

 public:
  explicit StartPage(QWidget* parent = nullptr);
  void ShowFiles(const std::vector<std::filesystem::path>& recent,
                 const std::vector<std::filesystem::path>& examples);

 signals:
  void newWanted();
  void openWanted();
  void fileChosen(const QString& path);

 private:
  void ShowColumn(QVBoxLayout& column, const QString& heading, const QString& none,
                  const std::vector<std::filesystem::path>& files);

  QVBoxLayout* recent_;
  QVBoxLayout* examples_;
};

}  // namespace tarnwick
