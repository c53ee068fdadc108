// A feature that the program knows nothing of, handed to the window through the list alone in place of fitting: its command,
// panel, mode, setting, menu entries and kind of file work.
#include <QLabel>
#include <QSettings>
#include <QStatusBar>
#include <QTest>

#include "app/canvas/canvas_mode.h"
#include "app/window/features.h"
#include "desk/commands/command_actions.h"
#include "desk/settings/settings.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

/// Tells how many DataSets there are and what happened last.
class CountPanel final : public Panel {
 public:
  CountPanel() : label_(new QLabel(this)) { label_->setObjectName("Count"); }
  void Follow(Document* document, PanelChange change) override {
    const std::size_t count = document ? document->Graph().SeriesCount() : 0;
    label_->setText(QString("%1 of %2").arg(count).arg(static_cast<int>(change.what)));
  }

 private:
  QLabel* label_;
};

class CountingMode final : public CanvasMode {
 public:
  ModeMaker Maker() const override { return MakeMode<CountingMode>; }
  std::string_view Hint() const override { return "Count"; }
};

constexpr PanelRow kCount = {.name = "CountDock",
                             .caption = "Count",
                             .side = DockSide::Left,
                             .make = [](const PanelParts&) -> std::unique_ptr<Panel> {
                               return std::make_unique<CountPanel>();
                             }};
constexpr Setting<double> kStep = {
    .section = "Count", .key = "Step", .fallback = 2, .label = "Step"};

void DoubleStep(CommandContext& context) {
  context.settings.Write(kStep, 2 * context.settings.Read(kStep));
}

Feature CountFeature() {
  static constexpr Command kCommands[] = {
      {.name = "Count1",
       .caption = "&Count",
       .menu = Menu::Analysis,
       .run = [](CommandContext& c) { Toggle(c.panels, kCount); },
       .checked = [](const CommandContext& c) { return c.panels.IsShown(kCount); }},
      {.name = "CountMode1",
       .caption = "Count &by Hand",
       .menu = Menu::Analysis,
       .enabled = HasDocument,
       .mode = MakeMode<CountingMode>},
      {.name = "CountStep1", .caption = "&Step", .menu = Menu::Analysis, .run = DoubleStep},
  };
  static constexpr PanelRow kPanels[] = {kCount};
  static const SettingRow kSettings[] = {&kStep};
  static constexpr TakenFile kFiles[] = {
      {.holds = FileHolds::FitFunction,
       .without_document = "is a count.",
       .take = [](Document& document, const std::filesystem::path&) {
         document.Edit("Count",
                       [](TxyGraph& graph) { graph.AddSeries(std::make_unique<TSeries>()); });
       }}};
  const auto items = [](const CommandContext& context, const QFontMetrics&) {
    const QString caption = QString::number(context.settings.Read(kStep));
    return std::vector<MenuItem>{{.caption = caption, .hint = {}, .run = DoubleStep}};
  };
  return {.name = "count",
          .commands = {kCommands},
          .panels = kPanels,
          .settings = kSettings,
          .lists = {{Menu::Analysis, items}},
          .files = kFiles};
}

class MadeUpFeatureTest : public testing::DesktopTest {
 protected:
  std::vector<Feature> UsedFeatures() override {
    std::vector<Feature> features = Features();
    std::erase_if(features, [](const Feature& feature) { return feature.name == "fit"; });
    features.push_back(CountFeature());
    return features;
  }
  bool IsChecked(const char* command) { return form_->Actions().ActionOf(command)->isChecked(); }
  QLabel* Count() { return form_->findChild<QLabel*>("Count"); }
};

TEST_F(MadeUpFeatureTest, APanelIsMadeWhenItIsShownAndFollowsEveryChange) {
  Start({Example("decay.dat")});
  EXPECT_EQ(Count(), nullptr);
  Run("Count1");
  EXPECT_TRUE(IsChecked("Count1"));
  ASSERT_NE(Count(), nullptr);
  EXPECT_TRUE(Count()->isVisible());
  const std::size_t before = ActiveDocument().Graph().SeriesCount();
  const auto shows = [&](std::size_t count, PanelChange::What what) {
    return Count()->text() == QString("%1 of %2").arg(count).arg(static_cast<int>(what));
  };
  EXPECT_TRUE(Count()->text().startsWith(QString::number(before)));
  ActiveDocument().Graph().AddSeries(std::make_unique<TSeries>());
  EXPECT_TRUE(shows(before + 1, PanelChange::What::Graph));
  ActiveDocument().History().SetChanged(false);
  EXPECT_TRUE(shows(before + 1, PanelChange::What::State));
  Run("CountMode1");
  EXPECT_TRUE(shows(before + 1, PanelChange::What::View));
  Run("FileClose1");
  EXPECT_TRUE(shows(0, PanelChange::What::ActiveDocument));
  Run("Count1");
  EXPECT_FALSE(Count()->isVisible());
  EXPECT_FALSE(IsChecked("Count1"));
}

TEST_F(MadeUpFeatureTest, ItsModeGoesOnAndOff) {
  Start({Example("decay.dat")});
  for (const bool on : {true, false}) {
    Run("CountMode1");
    EXPECT_EQ(IsChecked("CountMode1"), on);
    EXPECT_EQ(StatusText("Note") == "Count", on);
  }
  Run("CountMode1");
  QTest::keyClick(&ActiveCanvas(), Qt::Key_Escape);
  EXPECT_FALSE(IsChecked("CountMode1"));
}

TEST_F(MadeUpFeatureTest, ItsSettingsEntriesAndFilesAreKnown) {
  Start({});
  const auto file = folder_.Write("a.TFN", "");
  Drop(*form_, {file});
  EXPECT_EQ(TakeTold(), std::vector<std::string>{"\"a.TFN\" is a count."});
  Run("CountStep1");
  EXPECT_EQ(Opened(Menu::Analysis).actions().back()->text(), "4");
  Opened(Menu::Analysis).actions().back()->trigger();
  EXPECT_EQ(Opened(Menu::Analysis).actions().back()->text(), "8");
  Run("FileNew1");
  Drop(*form_, {file});
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Count");
}

}  // namespace
}  // namespace tarnwick
