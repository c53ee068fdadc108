// The window that prints, through its widgets.
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPrinter>
#include <QPushButton>
#include <QSpinBox>

#include "app/print/page_dialog.h"
#include "app/print/print_dialog.h"
#include "app/print/print_graph.h"
#include "desk/document/document.h"
#include "desk/settings/settings.h"
#include "desktop_fixture.h"

namespace tarnwick {
namespace {

class PrintTest : public testing::DesktopTest {
 protected:
  void Open() {
    Start({Example("decay.dat")});
    printer_.setOutputFormat(QPrinter::PdfFormat);
    dialog_ =
        std::make_unique<PrintDialog>(ActiveDocument(), printer_, *chooser_, *prompt_, form_.get());
    dialog_->show();
    auto& target = *dialog_->findChild<QComboBox*>("Target");
    target.setCurrentIndex(target.count() - 1);  // the PDF file
  }
  void TearDown() override {
    dialog_.reset();
    DesktopTest::TearDown();
  }
  void Press(const char* name) { dialog_->findChild<QPushButton*>(name)->click(); }
  void Choose() {
    dialog_->findChild<QSpinBox*>("Scale")->setValue(50);
    dialog_->findChild<QCheckBox*>("LineStyles")->setChecked(true);
  }
  const Dimensions& Placement() { return ActiveDocument().WholeGraph().GetDimensions(); }

  QPrinter printer_;
  std::unique_ptr<PrintDialog> dialog_;
};

TEST_F(PrintTest, DecisionsAreOneStepOrTakenBack) {
  Open();
  Choose();
  EXPECT_EQ(Placement().print_scale_pct, 50);
  dialog_->reject();
  EXPECT_EQ(Placement().print_scale_pct, 90);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());

  Open();
  Choose();
  Press("Keep");
  EXPECT_TRUE(ActiveDocument().WholeGraph().GetAppearance().print_style_for_lines);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Print Settings");
  Run("EditUndo1");
  EXPECT_EQ(Placement().print_scale_pct, 90);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
}

TEST_F(PrintTest, PrintingIntoAFileThatCanNotBeIsToldAndCanBeTriedAgain) {
  Open();
  const auto file = folder_.File("page.pdf");
  chooser_->to_save = {folder_.File("nowhere") / "page.pdf", file};
  Press("PrintNow");
  ASSERT_EQ(TakeTold().size(), 1u);
  EXPECT_TRUE(dialog_->isVisible());
  Press("PrintNow");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_TRUE(testing::ReadFile(file).starts_with("%PDF"));
}

TEST_F(PrintTest, PaperIsRememberedAndNonsenseIsNot) {
  const QString file = QString::fromStdString(folder_.File("paper.ini").string());
  Settings settings(std::make_unique<QSettings>(file, QSettings::IniFormat));
  const QPageLayout chosen(QPageSize(QPageSize::A5), QPageLayout::Landscape,
                           QMarginsF(10, 20, 30, 15), QPageLayout::Millimeter);
  printer_.setPageLayout(chosen);
  StorePaper(printer_, settings);
  QPrinter next;
  RestorePaper(settings, next);
  EXPECT_TRUE(next.pageLayout().isEquivalentTo(chosen));
  QSettings(file, QSettings::IniFormat).setValue("Paper/Width", "wide");
  QPrinter other;
  const QPageLayout before = other.pageLayout();
  RestorePaper(settings, other);
  EXPECT_EQ(other.pageLayout(), before);
}

TEST_F(PrintTest, MarginsThatLeaveNoRoomAreNotTaken) {
  PageDialog page(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()));
  const auto& ok = *page.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
  page.findChild<QDoubleSpinBox*>("MarginLeft")->setValue(200);
  EXPECT_FALSE(ok.isEnabled());
  EXPECT_FALSE(page.findChild<QLabel*>("WhyNot")->text().isEmpty());
  page.findChild<QComboBox*>("PaperOrientation")->setCurrentIndex(1);
  EXPECT_TRUE(ok.isEnabled());
  page.findChild<QComboBox*>("PaperSize")->setCurrentText("A3");
  EXPECT_EQ(page.Page().paintRect(QPageLayout::Millimeter), QRectF(200, 0, 220, 297));
}

}  // namespace
}  // namespace tarnwick
