// Every dialog, editor and panel as eye and keyboard meet it, with DataSets of the longest names: no letter answers twice on a
// page, every control says what it is, no text is cut off, all of it fits a small screen.
#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScrollArea>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <fstream>
#include <map>

#include <gtest/gtest.h>

#include "app/display/value_editor.h"
#include "desk/prompts/picture_size_dialog.h"
#include "desk/prompts/read_folder_dialog.h"
#include "desk/prompts/save_dialog.h"
#include "desk/widgets/text.h"
#include "desk/widgets/text_window.h"
#include "desktop_fixture.h"
#include "support/project_paths.h"
#include "support/run_statements.h"

namespace tarnwick {
namespace {

class DialogsTest : public testing::DesktopTest {
 protected:
  ProgramPaths Paths() override {
    ProgramPaths paths = DesktopTest::Paths();
    paths.libraries = {testing::ProgramFolder()};
    return paths;
  }

  void OpenLongNames() {
    const std::filesystem::path file = folder_.File("long names.csv");
    std::ofstream table(file);
    table << "Time_since_the_beginning_of_the_measurement [s]";
    for (const char* name : {"inlet", "outlet"})
      table << ",Temperature_of_the_cooling_water_at_the_" << name
            << "_of_the_second_stage_before_the_correction [K]";
    table << '\n';
    for (int i = 0; i < 200; ++i)
      table << i << ',' << 20 + i % 17 * 0.5 << ',' << 30 - i % 13 * 0.25 << '\n';
    table.close();
    Start({file});
    form_->resize(1024, 700);
    QCoreApplication::processEvents();
  }
  /// Looks at every page.
  void Look(QWidget& window) {
    QCoreApplication::processEvents();
    for (QTabWidget* const tabs : window.findChildren<QTabWidget*>()) {
      if (!tabs->isVisible()) continue;
      const int first = tabs->currentIndex();
      for (int page = 0; page < tabs->count(); ++page) {
        SCOPED_TRACE(tabs->tabText(page).toStdString());
        tabs->setCurrentIndex(page);
        LookAtPage(window);
      }
      return tabs->setCurrentIndex(first);
    }
    for (QTreeWidget* const pages : window.findChildren<QTreeWidget*>("Pages")) {
      for (QTreeWidgetItemIterator item(pages); *item; ++item) {
        SCOPED_TRACE((*item)->text(0).toStdString());
        pages->setCurrentItem(*item);
        LookAtPage(window);
      }
      return;
    }
    LookAtPage(window);
  }

 private:
  void LookAtPage(QWidget& window) {
    QCoreApplication::processEvents();
    GoByTab(window);
    std::map<QString, QString> letters;
    if (!window.isWindow()) {
      for (const QAction* menu : form_->menuBar()->actions()) TakeLetter(menu->text(), letters);
    }
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
      if (!widget->isVisibleTo(&window)) continue;
      LookAtText(*widget, letters);
      const bool asks = widget->focusPolicy() & Qt::TabFocus && widget->isEnabled() &&
                        !widget->focusProxy() && widget->objectName() != "qt_spinbox_lineedit";
      QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(widget);
      if (!asks || !told) continue;
      EXPECT_NE(told->text(QAccessible::Name), "")
          << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
  }
  /// From control to control, never back up or left in a line.
  static void GoByTab(QWidget& window) {
    QWidget* last = nullptr;
    for (QWidget* next = window.nextInFocusChain(); next != &window;
         next = next->nextInFocusChain()) {
      if (!window.isAncestorOf(next) || !IsTabStop(*next)) continue;
      if (last && ScrolledIn(*last) == ScrolledIn(*next)) {
        const QRect from(last->mapTo(&window, QPoint()), last->size());
        const QRect to(next->mapTo(&window, QPoint()), next->size());
        const bool up = to.bottom() <= from.top() && to.left() <= from.right();
        const bool left =
            to.right() <= from.left() && to.top() < from.bottom() && from.top() < to.bottom();
        EXPECT_FALSE(up || left) << "from " << NameOf(*last) << " to " << NameOf(*next);
      }
      last = next;
    }
  }
  static const QScrollArea* ScrolledIn(const QWidget& widget) {
    const QWidget* parent = widget.parentWidget();
    while (parent && !qobject_cast<const QScrollArea*>(parent)) parent = parent->parentWidget();
    return qobject_cast<const QScrollArea*>(parent);
  }
  static bool IsTabStop(const QWidget& widget) {
    return widget.isVisible() && widget.isEnabled() && widget.focusPolicy() & Qt::TabFocus &&
           !widget.focusProxy();
  }
  static std::string NameOf(const QWidget& widget) {
    return (widget.metaObject()->className() + (" " + widget.objectName()) + " " +
            widget.accessibleName() + widget.property("text").toString())
        .toStdString();
  }
  static void LookAtText(const QWidget& widget, std::map<QString, QString>& letters) {
    QString text;
    bool cut = false;
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
      const auto* tool = qobject_cast<const QToolButton*>(button);
      if (!tool || tool->toolButtonStyle() != Qt::ToolButtonIconOnly) text = button->text();
      cut = button->width() < button->fontMetrics().size(Qt::TextShowMnemonic, text).width();
    } else if (const auto* box = qobject_cast<const QGroupBox*>(&widget)) {
      text = box->title();
    } else if (const auto* list = qobject_cast<const QComboBox*>(&widget);
               list && list->metaObject() == &QComboBox::staticMetaObject && !list->isEditable()) {
      QStyleOptionComboBox option;
      option.initFrom(list);
      const QRect room = list->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                       QStyle::SC_ComboBoxEditField, list);
      for (int i = 0; i < list->count(); ++i)
        EXPECT_LE(list->fontMetrics().horizontalAdvance(list->itemText(i)), room.width())
            << "cut off: " << list->itemText(i).toStdString();
    } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
      if (label->buddy()) text = label->text();
      cut = label->width() < label->minimumSizeHint().width() ||
            (label->hasHeightForWidth() && label->height() < label->heightForWidth(label->width()));
    }
    EXPECT_FALSE(cut) << "cut off: " << widget.metaObject()->className() << " "
                      << widget.property("text").toString().toStdString();
    TakeLetter(text, letters);
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
      for (int i = 0; i < tabs->count(); ++i) TakeLetter(tabs->tabText(i), letters);
    }
  }
  static void TakeLetter(const QString& text, std::map<QString, QString>& letters) {
    const QString letter = QKeySequence::mnemonic(text).toString();
    if (letter.isEmpty()) return;
    const auto [other, free] = letters.emplace(letter, text);
    EXPECT_TRUE(free) << letter.toStdString() << ": " << other->second.toStdString() << ", "
                      << text.toStdString();
  }
};

TEST_F(DialogsTest, AreWhole) {
  OpenLongNames();
  for (const char* command : {"AnalysisIntegrate1", "fndHistogram1",     "AnalysisDifferentiate1",
                              "AnalysisAverage1",   "FindPeaks1",        "AnalysisSmooth1",
                              "AnalysisBaseLine1",  "AnalysisSpectrum1", "AnalysisCorrelation1",
                              "AnalysisCompute1",   "AnalysisResample1", "AnalysisClip1",
                              "AnalysisNormalise1", "AnalysisOutliers1", "AnalysisCompare1",
                              "MarkEdit1",          "editFunction1",     "FitSettings1",
                              "FilePrint1",         "FilePrnSetup1",     "FileOpenSource1"}) {
    SCOPED_TRACE(command);
    bool seen = false;
    QTimer::singleShot(0, form_.get(), [&] {
      QWidget* const dialog = QApplication::activeModalWidget();
      if (!dialog) return;
      seen = true;
      EXPECT_NE(dialog->windowTitle(), "");
      EXPECT_LE(dialog->width(), 1024);
      EXPECT_LE(dialog->height(), 700 - 30) << "less its frame";
      Look(*dialog);
      if (auto* kinds = dialog->findChild<QComboBox*>("SourceKind")) {
        for (int kind = 1; kind < kinds->count(); ++kind) {
          SCOPED_TRACE(kinds->itemText(kind).toStdString());
          kinds->setCurrentIndex(kind);
          Look(*dialog);
        }
      }
      qobject_cast<QDialog*>(dialog)->reject();
    });
    Run(command);
    EXPECT_TRUE(seen);
  }
  TakeTold();
}

TEST_F(DialogsTest, PanelsAre) {
  OpenLongNames();
  for (const char* command :
       {"EditGraph1", "EditData1", "AnalysisEvaluate1", "AnalysisPeakTable1", "ViewFitResult1"}) {
    SCOPED_TRACE(command);
    Run(command);
    QCoreApplication::processEvents();
    for (QDockWidget* const dock : form_->findChildren<QDockWidget*>()) {
      SCOPED_TRACE(dock->objectName().toStdString());
      if (dock->isVisible()) Look(*dock);
    }
    Run(command);
  }
}

TEST_F(DialogsTest, SourcesOfAllKindsAre) {
  // Beside which the programs lie that read them.
  QCoreApplication::addLibraryPath(ToQt(testing::ProgramFolder().string()));
  const std::filesystem::path base = folder_.File("base.sqlite");
  testing::RunStatements(
      base, {"CREATE TABLE run (t REAL, u REAL)", "INSERT INTO run VALUES (1, 2), (2, 3), (3, 5)"});
  Start({Example("furnace.xlsx"), Example("buoy.nc"), base});
  Run("EditData1");
  auto& area = *form_->findChild<QMdiArea*>();
  for (QMdiSubWindow* const window : area.subWindowList()) {
    SCOPED_TRACE(window->windowTitle().toStdString());
    area.setActiveSubWindow(window);
    QCoreApplication::processEvents();
    Look(*form_->findChild<QDockWidget*>("DataEditor"));
  }
}

TEST_F(DialogsTest, ThatAskForFilesAndValuesAre) {
  const std::string name = "Temperature_of_the_cooling_water_at_the_inlet_of_the_second_stage";
  Txy_ReadFolder folder(folder_.Path(), nullptr);
  SaveDialog save({folder_.Path(), name + ".tgr", name, {}}, nullptr);
  PictureSizeDialog size({}, nullptr);
  TextWindow text("Tarnwick Curve Fitting Settings", ToQt(name), nullptr);
  ValueEditor value(ToQt(name), "K", 1.5, nullptr);
  for (QDialog* const dialog :
       std::initializer_list<QDialog*>{&folder, &save, &size, &text, &value}) {
    SCOPED_TRACE(dialog->metaObject()->className());
    dialog->show();
    Look(*dialog);
    dialog->hide();
  }
}

}  // namespace
}  // namespace tarnwick
