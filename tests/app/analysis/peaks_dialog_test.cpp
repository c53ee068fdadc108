#include "app/analysis/peaks_dialog.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desktop_fixture.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PeaksDialog : public DesktopTest {
 protected:
  void SetUp() override {
    DesktopTest::SetUp();
    Start({Example("decay.dat")});
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName("Zigzag");
    for (const double x : {0, 1, 2, 3, 4, 5, 6})
      series->AddPoint(x, x == 3 ? 500 : x == 1 ? 20 : 0);
    Graph().AddSeries(std::move(series));
    Graph().SetCurrentSeriesIndex(1);
    dialog_ = std::make_unique<Txy_Peaks>(ActiveDocument(), *prompt_);
  }
  void TearDown() override {
    dialog_.reset();
    DesktopTest::TearDown();
  }
  TxyGraph& Graph() { return ActiveDocument().Graph(); }
  QLineEdit& Edit(const char* name) { return *dialog_->findChild<QLineEdit*>(name); }
  void Leave(const char* name, const char* text) {
    Edit(name).setText(text);
    emit Edit(name).editingFinished();
  }
  void Press(const QString& text) {
    for (auto* button : dialog_->findChildren<QAbstractButton*>())
      if (button->text() == text) button->click();
  }
  std::vector<std::string> Captions() {
    std::vector<std::string> captions;
    for (const Mark& mark : Graph().Marks().All()) captions.push_back(mark.caption);
    return captions;
  }

  std::unique_ptr<Txy_Peaks> dialog_;
};

TEST_F(PeaksDialog, APreviewTakesThePlaceOfTheLast) {
  EXPECT_EQ(Edit("e_NoiseLevel").text(), "0.01");
  Press("&Preview");
  EXPECT_THAT(Captions(), ElementsAre("1", "3"));
  EXPECT_TRUE(Graph().GetAppearance().marks_are_shown);
  Edit("e_NoiseLevel").setText("20");
  Press("&Preview");
  EXPECT_THAT(Captions(), ElementsAre("3"));
  Press("O&K");
  EXPECT_THAT(Captions(), ElementsAre("3"));
  ActiveDocument().History().Undo();
  EXPECT_THAT(Captions(), IsEmpty());
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
}

TEST_F(PeaksDialog, OkAfterClearLooksForNothing) {
  Press("&Preview");
  Press("C&lear");
  EXPECT_THAT(Captions(), IsEmpty());
  Press("O&K");
  EXPECT_THAT(Captions(), IsEmpty());
}

TEST_F(PeaksDialog, WhatChangesAfterClearIsLookedFor) {
  Press("&Preview");
  Press("C&lear");
  dialog_->findChild<QSpinBox*>("e_Precision")->setValue(5);
  Press("O&K");
  EXPECT_THAT(Captions(), ElementsAre("1", "3"));
}

TEST_F(PeaksDialog, MarksTakeTheLowestFreeIds) {
  Mark other;
  other.id = 2;
  Graph().Marks().SetMark(other);
  Press("&Preview");
  std::vector<std::int32_t> ids;
  for (const Mark& mark : Graph().Marks().All()) ids.push_back(mark.id);
  EXPECT_THAT(ids, ElementsAre(1, 2, 3));
  EXPECT_EQ(Graph().Marks().CurrentId(), 3);
}

TEST_F(PeaksDialog, CancelLeavesNothing) {
  const MarkList before = Graph().Marks();
  const bool shown = Graph().GetAppearance().marks_are_shown;
  Press("&Preview");
  Press("Cancel");
  EXPECT_EQ(Graph().Marks(), before);
  EXPECT_EQ(Graph().GetAppearance().marks_are_shown, shown);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
}

TEST_F(PeaksDialog, AMarginThatIsNoNumberIsNone) {
  const struct {
    const char *typed, *shown;
  } kRows[] = {{"2.000049", "2"}, {"abc", "None"}, {"1e9", "1E9"}, {"NaN", "None"}, {"", "None"}};
  for (const auto& row : kRows) {
    Leave("e_LeftMargin", row.typed);
    EXPECT_EQ(Edit("e_LeftMargin").text(), row.shown);
  }
}

TEST_F(PeaksDialog, AMarginHoldsAsItWasTyped) {
  Leave("e_LeftMargin", "2.000049");
  emit Edit("e_LeftMargin").editingFinished();  // left again: what it shows, 2, is not taken
  Press("&Preview");
  EXPECT_THAT(Captions(), IsEmpty());  // of 3, 4, 5, 6
}

TEST_F(PeaksDialog, TellsWhyItCannotSearchAndKeepsEarlierMarks) {
  const struct {
    std::function<void()> spoil;
    const char* told;
  } kRows[] = {
      {[&] { Leave("e_LeftMargin", "5"); }, "No Data Found in the Margins for DataSet Zigzag!"},
      {[&] { Edit("e_NoiseLevel").setText("much"); }, "The noise level \"much\" is no number."},
      {[&] { Graph().Series(1).Clear(); }, "No Data Found in DataSet Zigzag!"},
      {[&] { Graph().Series(1).SetSeriesName("other"); }, "DataSet Not Found!"},
  };
  Press("&Preview");
  for (const auto& row : kRows) {
    row.spoil();
    Press("&Preview");
    EXPECT_EQ(TakeTold(), std::vector<std::string>{row.told});
    EXPECT_THAT(Captions(), ElementsAre("1", "3"));
    Leave("e_LeftMargin", "");
    Edit("e_NoiseLevel").setText("0.01");
  }
}

}  // namespace
}  // namespace tarnwick
