#include "app/window/window_settings.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "desk/settings/settings.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

class WindowSettingsTest : public ::testing::Test {
 protected:
  testing::TemporaryFolder folder_;
  QString file_ = QString::fromStdString(folder_.File("settings.ini").string());
  Settings settings_{std::make_unique<QSettings>(file_, QSettings::IniFormat)};
};

TEST_F(WindowSettingsTest, FallBackWhereNothingUsableIsStored) {
  const QRect fallback(100, 100, 790, 500);
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  struct Row {
    const char* what;
    std::vector<std::pair<const char*, QVariant>> stored;
    QRect place;
    bool maximised = false;
  };
  const Row rows[] = {
      {"nothing stored", {}, fallback},
      {"texts", {{"GlobalLeft", "left"}, {"GlobalTop", "1e99"}, {"GlobalWidth", ""}}, fallback},
      {"no size", {{"GlobalWidth", 0}, {"GlobalHeight", -5}}, fallback},
      {"on no screen", {{"GlobalLeft", 90000}, {"GlobalWidth", 600}}, {100, 100, 600, 500}},
      {"larger than the screen",
       {{"GlobalWidth", 99999}, {"GlobalHeight", 99999}},
       {0, 0, screen.width() - 10, screen.height() - 36}},
      {"numbers as texts", {{"GlobalLeft", "12"}, {"WindowState", "0"}}, {12, 100, 790, 500}},
      {"was minimised", {{"WindowState", 1}, {"GlobalLeft", 40}}, {40, 100, 790, 500}},
      {"was maximised",
       {{"WindowState", 2}, {"GlobalWidth", 1600}, {"NormalPlace", QRect(5, 6, 700, 400)}},
       {5, 6, 700, 400},
       true},
      {"a state of another build", {{"WindowState", 7}}, fallback},
  };
  for (const Row& row : rows) {
    QSettings store(file_, QSettings::IniFormat);
    store.clear();
    for (const auto& [key, value] : row.stored) store.setValue(QString("Tarnwick/") + key, value);
    store.sync();
    QWidget window;
    RestoreWindow(window, Settings(std::make_unique<QSettings>(file_, QSettings::IniFormat)));
    EXPECT_EQ(QRect(window.pos(), window.size()), row.place) << row.what;
    EXPECT_EQ(window.isMaximized(), row.maximised) << row.what;
    EXPECT_FALSE(window.isMinimized()) << row.what;
  }
}

TEST_F(WindowSettingsTest, AMaximisedWindowKeepsItsNormalPlaceBeside) {
  {
    QWidget window;
    window.move(30, 40);
    window.resize(500, 300);
    window.setWindowState(Qt::WindowMaximized);
    StoreWindow(window, settings_);
    const QSettings store(file_, QSettings::IniFormat);
    EXPECT_EQ(store.value("Tarnwick/WindowState").toInt(), 2);
  }
  QWidget again;
  RestoreWindow(again, settings_);
  EXPECT_TRUE(again.isMaximized());
  EXPECT_EQ(again.size(), QSize(500, 300));
}

}  // namespace
}  // namespace tarnwick
