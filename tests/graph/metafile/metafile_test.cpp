#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <numbers>
#include <set>

#include "graph/metafile/metafile_picture.h"
#include "graph/metafile/metafile_shapes.h"
#include "support/temporary_folder.h"
#include "support/told.h"

namespace tarnwick {
namespace {

constexpr std::size_t kHeaders = 22 + 18;

unsigned WordAt(const std::string& bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes.at(at)) |
         static_cast<unsigned>(static_cast<unsigned char>(bytes.at(at + 1))) << 8;
}

struct Record {
  unsigned function = 0;
  std::string parameters;
};

/// The records, checked as a strict reader would: handle, corner and reserved words of 0, lengths, checksum, objects made before
/// use and at most as many as stated.
std::vector<Record> RecordsOf(const std::string& file) {
  for (const std::size_t of_zero : {4U, 6U, 8U, 16U, 18U}) EXPECT_EQ(WordAt(file, of_zero), 0U);
  unsigned checksum = 0;
  for (std::size_t i = 0; i < 20; i += 2) checksum ^= WordAt(file, i);
  EXPECT_EQ(WordAt(file, 20), checksum);
  EXPECT_EQ((WordAt(file, 28) | WordAt(file, 30) << 16) * 2, file.size() - 22);
  const std::size_t most_objects = WordAt(file, 32);
  const std::size_t longest = WordAt(file, 34) | WordAt(file, 36) << 16;
  std::vector<Record> records;
  std::set<unsigned> made;
  for (std::size_t at = kHeaders; at < file.size();) {
    const std::size_t words = WordAt(file, at) | WordAt(file, at + 2) << 16;
    EXPECT_LE(words, longest);
    if (words < 3 || at + words * 2 > file.size()) {
      ADD_FAILURE() << "a record of " << words << " words";
      break;
    }
    records.push_back({WordAt(file, at + 4), file.substr(at + 6, words * 2 - 6)});
    at += words * 2;
    const Record& record = records.back();
    if ((record.function & 0xFF) >= 0xFA && record.function >> 8 == 2) {
      unsigned free = 0;
      while (made.contains(free)) ++free;
      made.insert(free);
      EXPECT_LE(made.size(), most_objects);
    } else if (record.function == 0x012D) {
      EXPECT_TRUE(made.contains(WordAt(record.parameters, 0)));
    } else if (record.function == 0x01F0) {
      EXPECT_EQ(made.erase(WordAt(record.parameters, 0)), 1U);
    }
  }
  EXPECT_EQ(records.back().function, 0U) << "the end is missing";
  return records;
}

std::string Painted(const std::function<void(QPainter&)>& paint) {
  MetafilePicture picture(QSize(400, 300), 96);
  QPainter painter(&picture);
  paint(painter);
  painter.end();
  return picture.Bytes();
}

std::ptrdiff_t CountOf(const std::vector<Record>& records, unsigned function) {
  return std::count_if(records.begin(), records.end(),
                       [&](const Record& record) { return record.function == function; });
}

TEST(Metafile, RecordsAreWellFormedWhateverIsPainted) {
  const std::vector<Record> records = RecordsOf(Painted([](QPainter& painter) {
    const double infinite = std::numeric_limits<double>::infinity();
    for (int i = 0; i < 20; ++i) {
      painter.save();
      painter.setClipRect(QRectF(10 + i, 20, 300, 200), Qt::IntersectClip);
      painter.setPen(QPen(QColor(i * 10, 0, 200, i * 12), i, Qt::PenStyle(i % 6)));
      painter.setBrush(i % 2 == 0 ? QBrush(QColor(0, i, 0)) : QBrush());
      painter.rotate(i);
      painter.drawLine(QPointF(-1e9, i), QPointF(1e9, infinite));
      painter.drawLine(QPointF(-1e9, -1e9 + i), QPointF(1e9, 1e9));
      painter.drawEllipse(QPointF(i * 1e3, 50), 4e4, std::nan(""));
      painter.drawEllipse(QPointF(150, 100), 40, 4e5);
      painter.drawText(QPointF(50 + i, 100), i % 3 == 0 ? "text" : "χ² ∈ ℝ");
      painter.drawPoint(QPointF(50, 50));
      painter.drawImage(QRectF(0, 0, 50, infinite), QImage(3, 3, QImage::Format_ARGB32));
      painter.restore();
    }
  }));
  EXPECT_GT(CountOf(records, 0x0325), 20);
  EXPECT_EQ(CountOf(records, 0x0A32), 3) << "texts of Windows-1252, where there is a pen";
}

/// What the functions of a metafile are called.
std::string NameOf(unsigned function) {
  const std::map<unsigned, const char*> names = {
      {0x0000, "end"},       {0x0103, "map mode"},  {0x020B, "origin"},     {0x020C, "extent"},
      {0x0102, "back mode"}, {0x0106, "fill mode"}, {0x012E, "text align"}, {0x0209, "text color"},
      {0x02FA, "pen"},       {0x02FC, "brush"},     {0x02FB, "font"},       {0x012D, "select"},
      {0x01F0, "delete"},    {0x0325, "polyline"},  {0x0324, "polygon"},    {0x0538, "polygons"},
      {0x0416, "clip"},      {0x001E, "save"},      {0x0127, "restore"},    {0x0A32, "text"},
      {0x0F43, "image"},     {0x0B41, "image"}};
  const auto name = names.find(function);
  return name == names.end() ? "function " + std::to_string(function) : name->second;
}

/// The words of every record, those of a long one from its beginning.
std::vector<std::string> WordsOf(const std::string& file) {
  std::vector<std::string> told;
  std::string head = "head";
  for (std::size_t at = 6; at < 16; at += 2) head += " " + std::to_string(WordAt(file, at));
  told.push_back(head);
  for (const Record& record : RecordsOf(file)) {
    std::string line = NameOf(record.function);
    for (std::size_t at = 0; at + 1 < record.parameters.size() && at < 60; at += 2)
      line += " " + std::to_string(static_cast<std::int16_t>(WordAt(record.parameters, at)));
    told.push_back(line);
  }
  return told;
}

TEST(Metafile, EveryWordOfASmallPicture) {
  const auto told = [](const char* name, const std::function<void(QPainter&)>& paint) {
    testing::ExpectTold("graph/metafile/words.txt", name, WordsOf(Painted(paint)));
  };
  told("lines", [](QPainter& painter) {
    painter.drawLine(QPointF(10, 20), QPointF(110, 20));
    painter.setPen(QPen(QColor(200, 100, 0, 128), 3));
    painter.drawPolyline(QPolygonF({{10, 30}, {40, 60}, {40, 60}, {90, 30}}));
    painter.setOpacity(0.25);
    painter.drawLine(QPointF(-500, 100), QPointF(900, 100));
    painter.setOpacity(1);
    painter.setPen(QPen(Qt::blue, 2, Qt::DashLine, Qt::FlatCap));
    painter.drawLine(QPointF(20, 150), QPointF(60, 150));
    painter.setPen(QPen(Qt::red, 0));
    painter.drawPoint(QPointF(70, 170));
    painter.setPen(Qt::NoPen);
    painter.drawLine(QPointF(0, 0), QPointF(9, 9));
  });
  told("areas", [](QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(10, 20, 30));
    painter.drawRect(QRectF(10, 20, 30, 40));
    painter.drawPolygon(QPolygonF({{350, 10}, {450, 60}, {350, 110}}), Qt::WindingFill);
    QPainterPath ring;
    ring.addRect(100, 100, 60, 60);
    ring.addRect(120, 120, 20, 20);
    painter.drawPath(ring);
    painter.setPen(QPen(Qt::green, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(QPolygonF({{10, 210}, {50, 210}, {30, 250}}));
  });
  told("turned, scaled and clipped", [](QPainter& painter) {
    painter.setClipRect(QRectF(50, 50, 100, 80));
    painter.fillRect(QRectF(0, 0, 400, 300), Qt::cyan);
    painter.translate(100, 90);
    painter.rotate(90);
    painter.scale(2, 2);
    painter.setPen(QPen(Qt::black, 2));
    painter.drawLine(QPointF(0, 0), QPointF(10, 0));
    painter.setClipRect(QRectF(0, 0, 5, 5), Qt::IntersectClip);
    painter.fillRect(QRectF(-50, -50, 100, 100), Qt::red);
    painter.setClipping(false);
    painter.drawLine(QPointF(-100, 0), QPointF(100, 0));
  });
  told("images", [](QPainter& painter) {
    QImage image(3, 2, QImage::Format_ARGB32);
    image.fill(QColor(1, 2, 3));
    image.setPixel(2, 1, qRgba(200, 100, 50, 128));
    painter.drawImage(QRectF(10, 20, 30, 20), image);
    painter.drawImage(QRectF(-10, -5, 30, 20), image, QRectF(1, 0, 2, 2));
    painter.drawImage(QRectF(500, 20, 30, 20), image);
  });
}

TEST(Metafile, LongLinesAndManyColoursKeepTheirPieces) {
  QPolygonF zigzag;
  for (int i = 0; i < 20000; ++i) zigzag << QPointF(10 + i * 0.01, i % 2 == 0 ? 10 : 90);
  const std::vector<Record> records = RecordsOf(Painted([&](QPainter& painter) {
    painter.setPen(Qt::red);
    painter.drawPolyline(zigzag);
  }));
  std::size_t points = 0;
  for (const Record& record : records) {
    if (record.function == 0x0325) points += WordAt(record.parameters, 0) - 1;
  }
  EXPECT_EQ(points + 1, 20000U);
}

TEST(Metafile, LibwmfReadsLinesTextsAndAreasAtTheirPlaces) {
  const std::string bytes = Painted([](QPainter& painter) {
    painter.fillRect(QRectF(0, 0, 400, 300), QColor(0, 0, 255));
    painter.setPen(QPen(QColor(255, 0, 0), 2));
    painter.drawLine(QPointF(100, 150), QPointF(300, 75));
    QFont font("Arial");
    font.setPixelSize(20);
    painter.setFont(font);
    painter.setPen(QColor(0, 128, 0));
    painter.drawText(QPointF(200, 225), "level");
    painter.translate(40, 150);
    painter.rotate(-90);
    painter.drawText(QPointF(0, 0), "upright");
  });
  const testing::TemporaryFolder folder;
  const std::filesystem::path path = folder.File("a.wmf");
  std::ofstream(path, std::ios::binary) << bytes;
  QProcess reader;
  reader.start("wmf2svg", {QString::fromStdString(path.string())});
  ASSERT_TRUE(reader.waitForFinished()) << "wmf2svg of libwmf-bin is needed";
  const QString svg = QString::fromLatin1(reader.readAllStandardOutput());
  const auto numbers = [&](const char* pattern) {
    const auto match =
        QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption).match(svg);
    EXPECT_TRUE(match.hasMatch()) << pattern << " in " << svg.toStdString();
    std::vector<double> found;
    for (const QString& text : match.capturedTexts().mid(1)) found.push_back(text.toDouble());
    found.resize(4);
    return found;
  };
  const double scale = numbers("<svg width=\"(\\d+)\"")[0] / 400;
  const auto expect = [&](const std::vector<double>& found, const std::vector<double>& pixels,
                          double tolerance) {
    for (std::size_t i = 0; i < pixels.size(); ++i)
      EXPECT_NEAR(found[i], pixels[i] * scale, tolerance) << i;
  };
  expect(numbers("<polyline points=\"([\\d.]+),([\\d.]+)\\s+([\\d.]+),([\\d.]+)[^/]*stroke:red"),
         {100, 150, 300, 75}, 0.3);
  expect(numbers("<polygon points=\"([\\d.]+),([\\d.]+)[^/]*fill:blue"), {0, 0}, 0.5);
  // Letter by letter, each where its width puts it, whatever font the reader has.
  QFont arial("Arial");
  arial.setPixelSize(20);
  const double before_v = QFontMetricsF(arial).horizontalAdvance("le");
  expect(numbers("matrix\\(1\\.0[^)]* ([\\d.]+) ([\\d.]+)\\)\"\\s*>l<"), {200, 225}, 4);
  expect(numbers("matrix\\(1\\.0[^)]* ([\\d.]+) ([\\d.]+)\\)\"\\s*>v<"), {200 + before_v, 225}, 4);
  expect(numbers("font-size:([\\d.]+)[^>]*>l<"), {20}, 1);
  EXPECT_TRUE(svg.contains(QRegularExpression("matrix\\(-?0\\.0[^)]*\\)\"\\s*>u<")));
}

/// The parameters' words of the first record with this function.
std::vector<int> FirstOf(const std::vector<Record>& records, unsigned function, std::size_t words) {
  std::vector<int> found;
  for (const Record& record : records) {
    if (record.function != function || !found.empty()) continue;
    for (std::size_t i = 0; i < words; ++i)
      found.push_back(static_cast<std::int16_t>(WordAt(record.parameters, 2 * i)));
  }
  return found;
}

TEST(Metafile, FontsFillRulesAndPlacesAreWrittenAsTheyAreSet) {
  for (const bool odd_even : {true, false}) {
    const std::string file = Painted([&](QPainter& painter) {
      QPainterPath path;
      path.addRect(100, 60, 200, 120);
      path.setFillRule(odd_even ? Qt::OddEvenFill : Qt::WindingFill);
      painter.fillPath(path, QColor(1, 2, 3));
      QFont font("Arial", 12);
      font.setBold(odd_even);
      font.setUnderline(!odd_even);
      painter.setFont(font);
      painter.setPen(QColor(4, 5, 6));
      painter.translate(200, 150);
      painter.rotate(-30);
      painter.scale(2, 2);
      painter.drawText(QPointF(0, 0), "tilted");
    });
    const double units = WordAt(file, 10) / 400.0;
    EXPECT_EQ(units, 50) << "4800 to the inch are fine enough";
    EXPECT_EQ(WordAt(file, 12), 300 * units);
    EXPECT_EQ(WordAt(file, 14), 96 * units);
    const std::vector<Record> records = RecordsOf(file);
    EXPECT_EQ(FirstOf(records, 0x0106, 1), std::vector<int>{odd_even ? 1 : 2});
    // 12 points are 16 pixels of 1/96 inch, here twice as large; angles are tenths of degrees.
    const std::vector<int> font = FirstOf(records, 0x02FB, 6);
    EXPECT_EQ(font, (std::vector<int>{-static_cast<int>(std::lround(32 * units)), 0, 300, 300,
                                      odd_even ? 700 : 400, odd_even ? 0 : 0x100}));
    const std::vector<int> text = FirstOf(records, 0x0A32, 4);
    ASSERT_EQ(text.size(), 4U);
    EXPECT_EQ(text[2], 6);
    // The corner above the letters' beginning: the ascent away from (200, 150), left and up.
    const double ascent = 2 * QFontMetricsF(QFont("Arial", 12)).ascent();
    EXPECT_NEAR(text[0] / units, 150 - ascent * std::cos(std::numbers::pi / 6), 6);
    EXPECT_NEAR(text[1] / units, 200 - ascent * std::sin(std::numbers::pi / 6), 6);
    std::vector<int> x, y;
    const std::vector<int> polygon = FirstOf(records, 0x0324, 9);
    ASSERT_EQ(polygon.size(), 9U);
    for (std::size_t i = 1; i < 9; i += 2) x.push_back(polygon[i]), y.push_back(polygon[i + 1]);
    const auto [left, right] = std::minmax_element(x.begin(), x.end());
    const auto [top, bottom] = std::minmax_element(y.begin(), y.end());
    EXPECT_EQ((std::vector<int>{*left, *top, *right, *bottom}),
              (std::vector<int>{static_cast<int>(100 * units), static_cast<int>(60 * units),
                                static_cast<int>(300 * units), static_cast<int>(180 * units)}));
  }
}

TEST(Metafile, ImagesKeepTheirPlaceTheirPartAndTheirShade) {
  QImage image(4, 2, QImage::Format_RGB32);
  image.fill(Qt::blue);
  image.setPixelColor(1, 1, Qt::red);
  const std::string file = Painted([&](QPainter& painter) {
    painter.setOpacity(0.5);
    painter.drawImage(QRectF(100, 60, 200, 120), image, QRectF(1, 0, 2, 2));
  });
  const int units = static_cast<int>(WordAt(file, 10)) / 400;
  const std::vector<Record> records = RecordsOf(file);
  const std::vector<int> words = FirstOf(records, 0x0F43, 11);
  ASSERT_EQ(words.size(), 11U);
  // The part's height and width and where it begins; then the same of the place.
  EXPECT_EQ(std::vector<int>(words.begin() + 3, words.end()),
            (std::vector<int>{2, 2, 0, 0, 120 * units, 200 * units, 60 * units, 100 * units}));
  const auto one = std::ranges::find(records, 0x0F43U, &Record::function);
  const std::size_t pixels = 11 * 2 + 40;  // the lowest row first; blue, green and red
  const std::string half_red = "\x80\x80\xFF", half_blue = "\xFF\x80\x80";
  EXPECT_EQ(one->parameters.substr(pixels, 6), half_red + half_blue);
  EXPECT_EQ(one->parameters.substr(pixels + 8, 6), half_blue + half_blue);
}

TEST(MetafileShapes, PolygonsAreCutAndDashesKeepTheirLengths) {
  const QRectF area(0, 0, 10, 10);
  const QPolygonF square = QRectF(5, -5, 100, 10);
  EXPECT_EQ(ClipPolygon(square, area).boundingRect(), QRectF(5, 0, 5, 5));
  EXPECT_TRUE(ClipPolygon(square, QRectF(200, 0, 10, 10)).isEmpty());

  struct Row {
    const char* name;
    QList<qreal> pattern;
    double shortened;
    QList<double> begins_and_ends;
  };
  const QPolygonF line(QList<QPointF>{{0, 1}, {14, 1}});
  for (const Row& row : {Row{"dashes", {4, 2}, 0, {0, 4, 6, 10, 12, 14}},
                         Row{"dashes for round ends", {4, 2}, 1, {1, 3, 7, 9, 12.8, 13.2}},
                         Row{"dots keep a rest", {1, 5}, 2, {0.4, 0.6, 6.4, 6.6, 12.4, 12.6}},
                         Row{"no extent", {0, 0}, 1, {0, 14}}}) {
    QList<double> found;
    for (const QPolygonF& dash : CutIntoDashes(line, row.pattern, row.shortened))
      found << dash.front().x() << dash.back().x();
    ASSERT_EQ(found.size(), row.begins_and_ends.size()) << row.name;
    for (qsizetype i = 0; i < found.size(); ++i)
      EXPECT_NEAR(found[i], row.begins_and_ends[i], 1e-9) << row.name;
  }
}

}  // namespace
}  // namespace tarnwick
