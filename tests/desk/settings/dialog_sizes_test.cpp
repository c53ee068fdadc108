#include "desk/settings/dialog_sizes.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "desk/settings/settings.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

TEST(DialogSizes, OnlyWhatTheUserSizedComesBackSo) {
  const testing::TemporaryFolder folder;
  const QString file = QString::fromStdString(folder.File("settings.ini").string());
  Settings settings(std::make_unique<QSettings>(file, QSettings::IniFormat));
  const DialogSizes sizes(settings);
  struct Row {
    const char* name;
    QSize given;  // by the user; invalid: none
    QSize shown_then;
  };
  const QSize own(300, 200), wider(420, 260);
  const Row rows[] = {{"Txy_Any", {}, own},       // not sized: another font may want another size
                      {"Txy_Any", wider, wider},  // kept
                      {"", wider, own},           // nothing to know it by
                      {"QFileDialog", wider, own}};  // sizes itself
  const auto show = [&](const char* name, QSize given) {
    QDialog dialog;
    dialog.setObjectName(name);
    dialog.resize(own);
    dialog.show();
    const QSize shown = dialog.size();
    if (given.isValid()) dialog.resize(given);
    dialog.hide();
    return shown;
  };
  for (const Row& row : rows) {
    show(row.name, row.given);
    EXPECT_EQ(show(row.name, {}), row.shown_then) << row.name;
  }
  EXPECT_EQ(show("Txy_Other", {}), own) << "each by its name";
}

TEST(DialogSizes, NoneIsLargerThanItsScreen) {
  const testing::TemporaryFolder folder;
  const QString file = QString::fromStdString(folder.File("settings.ini").string());
  Settings settings(std::make_unique<QSettings>(file, QSettings::IniFormat));
  const DialogSizes sizes(settings);
  for (const bool asks : {false, true}) {
    QDialog dialog;
    auto* const column = new QVBoxLayout(&dialog);
    auto* const row = new QHBoxLayout;
    auto* const page = new QLabel("page");
    const QSize large = dialog.screen()->size() + QSize(300, 500);
    if (asks) page->setMinimumSize(large);
    row->addWidget(page);
    column->addLayout(row, 1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    column->addWidget(buttons);
    dialog.resize(large);
    dialog.show();
    EXPECT_TRUE(dialog.screen()->geometry().contains(dialog.geometry())) << asks;
    QCoreApplication::processEvents();
    EXPECT_TRUE(dialog.rect().contains(buttons->geometry())) << "buttons do not scroll";
    EXPECT_EQ(dialog.findChild<QScrollArea*>("DialogScroll") != nullptr, asks);
    EXPECT_TRUE(page->isVisible());
  }
}

}  // namespace
}  // namespace tarnwick
