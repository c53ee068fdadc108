#include "desk/prompts/picture_size_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace tarnwick {
namespace {

struct Fields {
  explicit Fields(PictureSizeDialog& dialog)
      : width(*dialog.findChild<QDoubleSpinBox*>("width")),
        height(*dialog.findChild<QDoubleSpinBox*>("height")),
        unit(*dialog.findChild<QComboBox*>("unit")),
        resolution(*dialog.findChild<QSpinBox*>("resolution")),
        lock(*dialog.findChild<QCheckBox*>("lock")),
        outcome(*dialog.findChild<QLabel*>("outcome")),
        ok(*dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)) {}
  QDoubleSpinBox& width;
  QDoubleSpinBox& height;
  QComboBox& unit;
  QSpinBox& resolution;
  QCheckBox& lock;
  QLabel& outcome;
  QPushButton& ok;
};

TEST(PictureSizeDialog, SidesUnitsAndResolutionGoTogether) {
  PictureSizeDialog dialog({800, 600, 96});
  const Fields fields(dialog);
  EXPECT_EQ(fields.width.value(), 800);
  fields.resolution.setValue(300);
  EXPECT_EQ(fields.width.value(), 2500) << "the same size on paper, finer";
  fields.unit.setCurrentIndex(1);
  fields.width.setValue(160);
  EXPECT_EQ(fields.height.value(), 120);
  EXPECT_EQ(fields.outcome.text(), "1890 × 1417 pixels, 160.0 × 120.0 mm");
  fields.lock.setChecked(false);
  fields.height.setValue(50);
  EXPECT_EQ(fields.width.value(), 160);
  fields.unit.setCurrentIndex(0);
  EXPECT_EQ(fields.height.value(), 591);
  const PictureOptions options = dialog.Options();
  EXPECT_EQ(options.width, 1890);
  EXPECT_EQ(options.height, 591);
  EXPECT_EQ(options.dpi, 300);
  fields.unit.setCurrentIndex(1);
  fields.width.selectAll();
  QTest::keyClicks(&fields.width, "62,5");
  EXPECT_EQ(fields.width.value(), 62.5) << "a comma typed is the point";
  fields.width.setValue(0);
  EXPECT_FALSE(fields.ok.isEnabled());
  EXPECT_EQ(fields.outcome.text(), "a picture's sides are 1 to 30000 pixels");
}

}  // namespace
}  // namespace tarnwick
