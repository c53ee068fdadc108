// Cut, copy and paste as a user has them, through the clipboard of the display.
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

#include "desk/document/document.h"
#include "desk/document/graph_mime_data.h"
#include "desktop_fixture.h"
#include "graph/edit/child_edit.h"
#include "graph/files/graph_file.h"
#include "graph/shown_series.h"

namespace tarnwick {
namespace {

using testing::DesktopTest;

class ClipboardTest : public DesktopTest {
 protected:
  static QClipboard& Clipboard() { return *QGuiApplication::clipboard(); }
  static void Put(const QString& format, const QByteArray& bytes) {
    auto* data = new QMimeData;
    data->setData(format, bytes);
    Clipboard().setMimeData(data);
  }
  TxyGraph& Whole() { return ActiveDocument().WholeGraph(); }
  std::string Encoded() { return EncodeGraph(Whole()); }
};

TEST_F(ClipboardTest, CopyOffersPictureDrawingsPointsAndTheGraphItself) {
  Start({Example("decay.dat")});
  Run("EditCopy1");
  const QMimeData& data = *Clipboard().mimeData();
  const QImage image = data.imageData().value<QImage>();
  EXPECT_EQ(image.width(), 2 * Whole().ClientWidth());
  EXPECT_GT(testing::PixelsOf(image, QColor(0x00, 0x5F, 0xA8)), 100);
  EXPECT_TRUE(data.data("image/svg+xml").contains("<svg"));
  EXPECT_TRUE(data.data("application/pdf").startsWith("%PDF"));
  EXPECT_TRUE(data.data("image/x-wmf").startsWith("\xD7\xCD\xC6\x9A"));
  EXPECT_EQ(data.text().count('\n'), Whole().CurrentSeries()->PointCount() + 1);
  EXPECT_TRUE(data.text().section('\n', 0, 0).contains('\t'));
  EXPECT_EQ(data.data(kGraphFormat).toStdString(), Encoded());
  EXPECT_FALSE(data.hasFormat(kChildGraphFormat));
}

TEST_F(ClipboardTest, WhatIsCutComesBackByPastingAndByUndo) {
  Start({Example("decay.dat")});
  const std::int32_t points = Whole().CurrentSeries()->PointCount();
  const std::size_t count = Whole().SeriesCount();
  const std::string name = Whole().CurrentSeries()->SeriesName();
  const std::string before = Encoded();
  Run("EditCut1");
  EXPECT_EQ(Whole().SeriesCount(), count - 1);
  Run("EditPaste1");
  EXPECT_EQ(Whole().SeriesCount(), count);
  EXPECT_EQ(Whole().CurrentSeries()->SeriesName(), name);
  EXPECT_EQ(Whole().CurrentSeries()->PointCount(), points);
  Run("EditUndo1");
  Run("EditUndo1");
  EXPECT_EQ(Encoded(), before);
}

TEST_F(ClipboardTest, AnInsertedGraphIsCutAndPastedAsOne) {
  Start({Example("decay.dat")});
  ActiveDocument().Edit("Insert", [](TxyGraph& graph) { InsertChild(graph, "Inset"); });
  ActiveDocument().SelectChild(0);
  Run("EditCut1");
  EXPECT_TRUE(Whole().Children().empty());
  Run("EditPaste1");
  ASSERT_EQ(Whole().Children().size(), 1u);
  EXPECT_EQ(Whole().Children()[0]->GetAppearance().title_of_graph, "Inset");
  EXPECT_EQ(ActiveDocument().SelectedChild(), std::size_t{0});
}

TEST_F(ClipboardTest, ColumnsOfASpreadsheetBecomeDataSetsOfTheirOwn) {
  Start({});
  Run("FileNew1");
  QString table = "Time\tVoltage\tCurrent\r\n";
  for (int row = 0; row < 6000; ++row)
    table += QString("%1\t%2,5\t%3\r\n").arg(row).arg(row).arg(7);
  Clipboard().setText(table);
  Run("EditPaste1");
  ASSERT_EQ(Whole().SeriesCount(), 2u);
  const TSeries& voltage = Whole().Series(0);
  EXPECT_EQ(voltage.SeriesName(), "Voltage");
  EXPECT_EQ(voltage.PointCount(), 6000);  // every row, whatever their number
  EXPECT_EQ(voltage.GetExtremes().y_max, 5999.5);
  EXPECT_EQ(voltage.Source().DataSource, DataSourceKind::Manual);
  EXPECT_EQ(ActiveDocument().History().UndoName(), "Paste");
  Run("EditUndo1");
  EXPECT_EQ(Whole().SeriesCount(), 0u);
}

TEST_F(ClipboardTest, FilesOnTheClipboardAreLoaded) {
  Start({});
  Run("FileNew1");
  auto* data = new QMimeData;
  data->setUrls({QUrl::fromLocalFile(QString::fromStdString(Example("decay.dat").string()))});
  Clipboard().setMimeData(data);
  Run("EditPaste1");
  EXPECT_TRUE(HasPoints(Whole()));
}

TEST_F(ClipboardTest, WhatCanNotBePastedIsSaidAndChangesNothing) {
  Start({Example("decay.dat")});
  const std::string before = Encoded();
  const QByteArray whole = QByteArray::fromStdString(before);
  struct Row {
    const char* format;
    QByteArray bytes;
    std::string told;
  };
  const std::string nothing = "The clipboard holds nothing that can be pasted into a graph";
  const Row rows[] = {
      {"text/plain", " \n\t ", nothing},
      {"image/png", "\x89PNG", nothing},
      {"application/x-other", QByteArray(100, '\xFF'), nothing},
      {"text/plain", "Dear colleague,\nplease find no numbers here\n",
       "The text on the clipboard can not be plotted"},
      {kGraphFormat, "", "Not a valid graph file: clipboard"},
      {kGraphFormat, QByteArray(1000, '\xFF'), "Not a valid graph file: clipboard"},
      {kGraphFormat, QByteArray(whole).replace("xyvk06", "xyvk16"), "Wrong Graph version"},
  };
  for (const Row& row : rows) {
    Put(row.format, row.bytes);
    Run("EditPaste1");
    const std::vector<std::string> told = TakeTold();
    ASSERT_EQ(told.size(), 1u) << row.format;
    EXPECT_NE(told[0].find(row.told), std::string::npos) << told[0];
  }
  for (qsizetype size = 1; size < whole.size(); size += whole.size() / 40) {
    Put(kGraphFormat, whole.first(size));
    Run("EditPaste1");
    EXPECT_EQ(TakeTold().size(), 1u) << size;
  }
  EXPECT_EQ(Encoded(), before);
  EXPECT_FALSE(ActiveDocument().History().CanUndo());
}

}  // namespace
}  // namespace tarnwick
