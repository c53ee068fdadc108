// Every command's fixed texts, and what its actions and menus make of them.
#include <QAction>
#include <QToolBar>
#include <map>
#include <set>

#include "app/window/features.h"
#include "desk/commands/command_actions.h"
#include "desk/commands/menu_table.h"
#include "desk/widgets/text.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

struct FixedTexts {
  std::string_view name;
  std::string_view caption;
  std::string_view shortcut;
  std::string_view hint;
};

constexpr FixedTexts kFixedTexts[] = {
    {"FileNew1", "&New", "Ctrl+N", "New|Create a New Graph Window"},
    {"FileOpen1", "&Open", "Ctrl+O", "Open|Open a File"},
    {"FileOpenFolder1", "Open &Directory", "", "Open Directory|Open All Files in Directory"},
    {"FileClose1", "Close &Window", "Ctrl+W", "Close|Close Current Window"},
    {"FileCloseAll1", "&Close All", "", "Close All|Close All Windows"},
    {"FileLoadData1", "&Load Data", "Ctrl+L", "Load Data|Load Data to Current Window"},
    {"FileReload1", "&Discard Changes", "", "Discard Changes|Reload Window From Template"},
    {"FileSave1", "&Save", "Ctrl+S", "Save|Save Current Window"},
    {"FileSaveAs1", "Save &As...", "", "Save As|Save Current Window with different Name"},
    {"FilePrint1", "&Print", "Ctrl+P", "Print|Print Current Window"},
    {"FilePrnSetup1", "Printer Set&up", "", ""},
    {"FileExit1", "E&xit", "Alt+F4", "Exit|Exit Program"},
    {"FileEscExit1", "", "Esc", ""},
    {"EditCut1", "Cu&t", "Ctrl+X", "Cut|Cuts the selection and puts it on the Clipboard"},
    {"EditCopy1", "&Copy", "Ctrl+C", "Copy|Copies Graph Image on the Clipboard"},
    {"EditPaste1", "&Paste", "Ctrl+V", "Paste|Inserts Clipboard contents"},
    {"EditData1", "Edit &Data", "", "Edit Data|Run Data Editor"},
    {"EditGraph1", "&Edit Graph", "", "Edit Graph|Run Graph Editor"},
    {"EditClearSer1", "C&lear DataSet", "", "Clear Data|Clear Data in Current DataSet"},
    {"EditDeleteSeries1", "&Delete DataSet", "",
     "Delete Current DataSet|Delete Current DataSet Permanently"},
    {"EditDelPoint1", "Delete &Bad Point", "Ctrl+B",
     "Delete Point in Current DataSet|Delete Bad Point in Current DataSet"},
    {"EditMovePoint1", "&Move Data Point", "Ctrl+M", "Move Point|Move Point in Current DataSet"},
    {"editInsertPoint1", "&Insert Data Point", "Ins", "Insert Point|Add Point to Current DataSet"},
    {"editRefresh1", "&Current Window", "F5",
     "Refresh Data|Refresh DataSets from External Sources"},
    {"editRefreshAll1", "&All Windows", "Ctrl+F5", "Refresh All Data|Refresh Data in All Windows"},
    {"editXShift1", "To Current &Mark", "", "Set Mark as Zero Time|Set Current Mark as Zero Time"},
    {"editFunction1", "&Edit", "", "Curve Fitting Settings|Edit Curve Fitting Properties"},
    {"EditTbox1", "IO Tool&Box", "", "IO ToolBox|Edit IO Configuration"},
    {"EditSusResAI1", "Resume &AI", "", "Run Test|Start Data Collection"},
    {"editStopAI1", "&Stop AI ", "", "Stop AI|Emergency Stop AI Activity"},
    {"editZeroTimer1", "Zero Timer &Now", "", "Zero Timer Now|Set Timer to Zero Now"},
    {"WindowCascade1", "&Cascade", "", "Cascade"},
    {"WindowTileHorizontal1", "Tile &Horizontally", "", "Tile Horizontally"},
    {"WindowTileVertical1", "Tile &Vertically", "", "Tile Vertically"},
    {"WindowMinimizeAll1", "&Minimize All", "", "Minimize Al|Minimize all Graphs to Icons "},
    {"WindowArrangeAll1", "Arrange &Icons", "", "Arrange All|Arranges all Icons "},
    {"WindowShowDisplay1", "Hide &Displays", "", "Hide Displays|Hide Display Panel"},
    {"WindowMoveDisplay1", "&Move Displays", "", "UnDock Display Panel|UnDock Display Panel"},
    {"MenuShowCaptions1", "Show Button &Captions", "",
     "Show Button Captions|Show Menu Button Captions"},
    {"HelpContents1", "&Contents", "F1", "Help|Open Help File"},
    {"HelpTopicSearch1", "&Topic Search", "", "Help Topic Search|Keyword Search in Help File"},
    {"HelpAbout1", "&About...", "",
     "About|Displays program information, version number, and copyright"},
    {"MarkVert1", "&Vertical", "", "Vertical Mark|Draw Vertical Mark"},
    {"MarkHor1", "&Horizontal", "", "Horizontal Mark|Draw Horizontal Mark"},
    {"MarkLine1", "&Line", "", "Linear Mark|Draw Linear Mark"},
    {"MarkPoint1", "&Point", "", "Point Mark|Draw Point Mark"},
    {"MarkText1", "Te&xt", "", "Text Mark|Write Text on the Graph"},
    {"MarkArrow1", "&Arrow", "", "Arrow Mark|Draw Arrow"},
    {"MarkRectangle1", "&Rectangle", "", "Rectangle Mark|Draw Rectangle"},
    {"MarkDelete1", "&Delete", "", "Delete Mark|Delete Current Mark"},
    {"MarkShowHide1", "Show/Hide &Marks", "", "Hide/Show Marks|Hide/Show Marks in Current Window"},
    {"MarkBaseLine1", "Set as &BaseLine", "",
     "Set as Baseline for Current DataSet|Set Current Mark as Baseline"},
    {"MarkEdit1", "&Edit Marks", "", "Mark Editor|Run Mark Editor"},
    {"GraphLegend1", "Show/Hide &Legend", "",
     "Show/Hide Legend |Show/Hide Legend for Current Graph"},
    {"GraphResetLegend1", "&Reset Legend", "", "Reset Legend|Draw Standard Legend"},
    {"GraphZoom1", "Zoom &Window", "", "Zoom Window|Drag and Zoom Desired Area"},
    {"GraphResetZoom1", "&Undo Zoom", "", "Undo Zoom|Return to Previous Scales"},
    {"GraphZoomAll1", "&All Axes", "", "Zoom All|Set AutoScale on All Axes"},
    {"GraphZoomX1", "&X Axis", "", "Zoom X|Set AutoScale on X  Axis"},
    {"GraphZoomY1", "&Y Axis", "", "Zoom Y|Set AutoScale on Y Axis"},
    {"GraphZoomY2_1", "Y&2 Axis", "", "Zoom Y2|Set AutoScale on Second Y Axis"},
    {"FindArea1", "&Integrate", "", "Find Area|Calculate Area for Current DataSet"},
    {"findSum1", "&Sum of data points", "",
     "Find Sum|Calculate Sum of data points for Current DataSet"},
    {"findRunSum1", "&Running Sum", "",
     "Find Running Sum|Calculate Running Sum of data points for Current DataSet"},
    {"fndHistogram1", "&Histogram", "", "Calculate histogram"},
    {"FindPeaks1", "Peek &Peaks", "", "Define Peaks|Define Peaks in DataSet"},
    // of no names of their own
    {"AnalysisIntegrate1", "&Integrate", "", ""},
    {"AnalysisDifferentiate1", "&Differentiate", "", ""},
    {"AnalysisAverage1", "&Average DataSets", "", ""},
};

class CommandTableTest : public DesktopTest {
 protected:
  QAction* ActionOf(std::string_view name) { return form_->Actions().ActionOf(name); }
  /// "&Edit|-|&Print", hidden ones left out; "" for no menu.
  std::string Entries(Menu menu) {
    QStringList entries;
    for (const QAction* action : Opened(menu).actions()) {
      if (action->isVisible()) entries.append(action->isSeparator() ? "-" : action->text());
    }
    return entries.join('|').toStdString();
  }
};

TEST_F(CommandTableTest, EveryRowHasItsTexts) {
  Start({});
  const auto commands = CommandsOf(Features());
  for (const FixedTexts& fixed : kFixedTexts) {
    SCOPED_TRACE(fixed.name);
    const auto row = std::ranges::find(commands, fixed.name, &Command::name);
    ASSERT_NE(row, commands.end());
    EXPECT_EQ((*row)->caption, fixed.caption);
    EXPECT_EQ((*row)->shortcut, fixed.shortcut);
    EXPECT_EQ((*row)->hint, fixed.hint);
    const QAction& action = *ActionOf(fixed.name);
    EXPECT_EQ(action.shortcut(), QKeySequence(ToQt(fixed.shortcut), QKeySequence::PortableText));
    EXPECT_EQ(action.statusTip(), ToQt(LongHint(fixed.hint)));
  }
}

TEST_F(CommandTableTest, MenusHoldTheirEntriesInOrder) {
  struct Row {
    Menu menu;
    const char* entries;
  };
  constexpr Row kRows[] = {
      {Menu::Data,
       "&Refresh Data|-|&X-Axis Shift|Curve &Fitting|-|"
       "&Start Live Data|&Pause Live Data|S&top Live Data"},
      {Menu::RefreshData, "&Current Window|&All Windows"},
      {Menu::XAxisShift, "To Current &Mark"},
      {Menu::Insert, "&New Graph|-|&Delete|&Clear|-|&Unselect"},
      {Menu::Analysis,
       "&Area|&Integrate|&Sum of data points|&Running Sum|&Histogram|&Differentiate|Peek &Peaks|"
       "&Average DataSets|-|Smoothin&g|&Base Line|Sp&ectrum|C&orrelation|"
       "Compute by E&xpression|Resamp&le|&Clip|&Normalise|Remove "
       "O&utliers|-|Co&mpare DataSets|Recompu&te|-|E&valuate at X|Pea&k Table"},
      {Menu::Legend, "Show/Hide &Legend|&Reset Legend|-|&Verical|&Horizontal|&Free"},
  };
  for (const Row& row : kRows) EXPECT_EQ(Entries(row.menu), row.entries);
}

// Those of one menu that its fixed texts give twice.
TEST_F(CommandTableTest, LettersOfAMenuAreGivenOnceButForFixedTexts) {
  Start({Example("pendulum.csv")});
  std::vector<std::string> twice;
  for (const MenuRow& menu : MenuTable()) {
    std::map<QString, QString> letters;
    for (const QAction* action : Opened(menu.menu).actions()) {
      const QString letter = QKeySequence::mnemonic(action->text()).toString();
      if (letter.isEmpty() || !action->isVisible()) continue;
      const auto [first, free] = letters.emplace(letter, action->text());
      if (!free) twice.push_back((first->second + "|" + action->text()).toStdString());
    }
  }
  EXPECT_EQ(twice,
            (std::vector<std::string>{"Open &Directory|&Discard Changes",
                                      "Edit &Data|&Delete DataSet", "&Area|&Average DataSets"}));
}

TEST_F(CommandTableTest, WithoutAWindowOnlyWhatNeedsNoneIsEnabled) {
  Start({});
  std::set<std::string_view> enabled;
  for (const FixedTexts& fixed : kFixedTexts) {
    if (ActionOf(fixed.name)->isEnabled()) enabled.insert(fixed.name);
  }
  EXPECT_EQ(enabled, (std::set<std::string_view>{
                         "FileNew1", "FileOpen1", "FileOpenFolder1", "FilePrnSetup1", "FileExit1",
                         "FileEscExit1", "WindowShowDisplay1", "WindowMoveDisplay1",
                         "MenuShowCaptions1", "HelpContents1", "HelpTopicSearch1", "HelpAbout1"}));
}

TEST_F(CommandTableTest, TheDataMenuEndsWithTheDataSets) {
  Start({Example("pendulum.csv")});
  TxyGraph& graph = ActiveDocument().Graph();
  TSeries& residuals = graph.AddSeries(std::make_unique<TSeries>());
  residuals.SetSeriesName("R&D");
  SeriesStyle style = residuals.Style();
  style.selectable = false;
  residuals.SetStyle(style);
  EXPECT_TRUE(Entries(Menu::Data).ends_with("|-|&1 Auslenkung [°]|&2 R&&D"));
  const auto entries = Opened(Menu::Data).actions();
  EXPECT_FALSE(entries.back()->isEnabled());
  EXPECT_TRUE(entries[entries.size() - 2]->isChecked());
}

TEST_F(CommandTableTest, CaptionsBelowTheButtonsAreKept) {
  for (const bool shown : {true, false}) {
    Run("MenuShowCaptions1");
    EXPECT_EQ(form_->Actions().ToolBar().toolButtonStyle(),
              shown ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
    TearDown();
    SetUp();
    const QAction& action = *ActionOf("MenuShowCaptions1");
    EXPECT_EQ(action.text(), shown ? "Hide Button &Captions" : "Show Button &Captions");
    EXPECT_EQ(action.statusTip(),
              shown ? "Hide Menu Button Captions" : "Show Menu Button Captions");
  }
}

}  // namespace
}  // namespace tarnwick
