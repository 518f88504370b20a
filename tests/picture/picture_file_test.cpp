#include "picture/picture_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QFile>
#include <QImageWriter>
#include <set>

#include "files/file_error.h"
#include "files/read_file.h"
#include "picture/jpeg_image.h"
#include "picture/picture_error.h"
#include "picture/picture_size.h"
#include "tests/support/folder_test.h"

namespace pelorin::picture {
namespace {

class PictureFile : public tests::FolderTest {
 protected:
  bool Loads(const char* name, const QByteArray& content) {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    error_ = tests::ErrorOf([&] { loaded_ = LoadRecording(Path(name)); });
    return error_.isEmpty();
  }

  /// The lines that are there by what is said of the last picture; all for one that is whole.
  int LinesSaid(const char* name) const {
    if (loaded_.Damage.isEmpty()) return loaded_.Image.height();
    EXPECT_TRUE(loaded_.Damage.startsWith(Path(name))) << loaded_.Damage.toStdString();
    const qsizetype at = loaded_.Damage.indexOf(u"Only the first ");
    return at < 0 ? loaded_.Image.height() : loaded_.Damage.mid(at).section(u' ', 3, 3).toInt();
  }

  LoadedPicture loaded_;
  QString error_;  ///< of the last picture; empty for one that loaded
};

TEST_F(PictureFile, JpegKeepsColoursAndLeavesTheOldFileOnFailure) {
  const QString path = Path("Result.JPG");
  QImage image(37, 21, QImage::Format_RGB32);
  image.fill(QColor(200, 100, 50));
  for (const QImage& kind : {image.convertToFormat(QImage::Format_Grayscale8), image}) {
    SaveJpeg(kind, path, 90);
    const QImage loaded = LoadPicture(path);
    ASSERT_EQ(loaded.size(), image.size());
    EXPECT_EQ(loaded.format(), QImage::Format_RGB32);
    const QColor seen = loaded.pixelColor(36, 20);
    EXPECT_NEAR(seen.red(), kind.pixelColor(0, 0).red(), 3);
    EXPECT_NEAR(seen.blue(), kind.pixelColor(0, 0).blue(), 3);
  }
  EXPECT_THROW(SaveJpeg(QImage(), path, 33), PictureError);
  EXPECT_THROW(SaveJpeg(image.scaled(65501, 1), path, 33), PictureError);
  EXPECT_THROW(SaveJpeg(image, path + QStringLiteral("/x.jpg"), 33), files::FileError);
  EXPECT_EQ(LoadPicture(path).width(), 37);
}

TEST_F(PictureFile, CutShortShowsTheLinesThatAreThere) {
  QImage image(24, 64, QImage::Format_RGB32);
  for (int i = 0; i < 24 * 64; ++i)
    image.setPixel(i % 24, i / 24, 0xFF000000U + static_cast<QRgb>(i * i * 77));
  SaveJpeg(image, Path("pass.jpg"), 33);
  const qint64 small = QFile(Path("pass.jpg")).size();
  SaveJpeg(image, Path("pass.jpg"), 95);
  EXPECT_GT(QFile(Path("pass.jpg")).size(), small + 300) << "quality must count";
  ASSERT_TRUE(image.save(Path("pass.png")) && image.save(Path("pass.bmp")));
  for (const char* name : {"pass.jpg", "pass.png", "pass.bmp"}) {
    const QByteArray file = files::ReadFile(Path(name));
    const QImage whole = LoadPicture(Path(name));
    std::set<int> counts;  // of lines, as the file grows
    for (qsizetype size = 0; size < file.size(); size += 3) {
      SCOPED_TRACE(name + std::to_string(size));
      if (!Loads(name, file.first(size))) continue;
      const int lines = std::min(LinesSaid(name), 64);
      EXPECT_EQ(loaded_.Image.copy(0, 0, 24, lines), whole.copy(0, 0, 24, lines));
      for (int y = lines; y < 64; ++y) ASSERT_EQ(loaded_.Image.pixel(7, y), kMissingLine);
      if (lines == 64) continue;  // only what follows the pixels is missing
      EXPECT_THROW(LoadPicture(Path(name)), PictureError);
      EXPECT_TRUE(counts.empty() || lines >= *counts.rbegin());
      counts.insert(lines);
    }
    // JPEG comes in steps of 16 lines, PNG line by line; of bitmaps, which begin at the bottom, only whole
    // ones.
    EXPECT_EQ(counts.size(), name == std::string("pass.jpg")   ? 3U
                             : name == std::string("pass.png") ? 63U
                                                               : 0U);
    for (qsizetype at = 0; at < file.size(); at += 3) {
      QByteArray garbled = file;
      garbled[at] = static_cast<char>(~garbled[at]);
      Loads(name, garbled);  // either answer, and no other exception
    }
  }
}

TEST_F(PictureFile, PicturesThatGrowFinerAreShownAsTheyCame) {
  QImage image(64, 64, QImage::Format_RGB32);
  for (int i = 0; i < 64 * 64; ++i) image.setPixel(i % 64, i / 64, qRgb(i / 16, 200, i % 64));
  QImageWriter writer(Path("fine.jpg"));
  writer.setProgressiveScanWrite(true);
  ASSERT_TRUE(writer.write(image));
  const QByteArray file = files::ReadFile(Path("fine.jpg"));
  ASSERT_TRUE(Loads("fine.jpg", file) && loaded_.Damage.isEmpty());
  ASSERT_TRUE(Loads("fine.jpg", file.first(file.lastIndexOf("\xFF\xDA") + 20)));
  EXPECT_TRUE(loaded_.Damage.endsWith(u"It is shown as far as it could be read."))
      << loaded_.Damage.toStdString();
  EXPECT_NEAR(qRed(loaded_.Image.pixel(32, 60)), 240, 25);
}

TEST_F(PictureFile, LyingSizesTakeNoMemory) {
  const auto peakMegabytes = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
  };
  SaveJpeg(QImage(8, 8, QImage::Format_Grayscale8), Path("pass.jpg"), 33);
  QImageWriter writer(Path("fine.jpg"));
  writer.setProgressiveScanWrite(true);
  ASSERT_TRUE(writer.write(QImage(16, 16, QImage::Format_RGB32)));
  const QByteArray jpeg = files::ReadFile(Path("pass.jpg")), fine = files::ReadFile(Path("fine.jpg"));
  const auto withSize = [](QByteArray file, const char* mark, const QByteArray& size) {
    return file.replace(file.indexOf(mark) + 5, 4, QByteArray::fromHex(size));
  };
  const QByteArray lastScan = fine.sliced(fine.lastIndexOf("\xFF\xDA")).chopped(2);
  // 20,000 x 20,000 in RGB, with its right check sum, then an empty IDAT chunk.
  const QByteArray png = QByteArray::fromHex(
      "89504E470D0A1A0A 0000000D 49484452 00004E20 00004E20"
      "0802000000 6C12D16E 00000000 49444154 35AF061E");
  const QByteArray junk(3'000'000, 'x');
  const struct {
    const char* Name;
    QByteArray Content;
    const char* Error;
  } rows[] = {
      {"a.jpg", withSize(jpeg, "\xFF\xC0", "4E204E20"), "20000 x 20000 pixels cannot be in this file"},
      {"b.jpg", withSize(jpeg, "\xFF\xC0", "4E204E20") + junk,
       "20000 x 20000 pixels are too many: a file of this length may have 100 million, and 30000 a side"},
      {"c.jpg", withSize(fine, "\xFF\xC2", "23282328") + junk,
       "9000 x 9000 pixels would take too long: 446 million bytes have to be decoded, and a file of this "
       "length "
       "may have 360 million"},
      {"d.jpg", fine.chopped(2) + lastScan.repeated(100) + fine.last(2),
       "it comes in 110 scans; at most 100 are decoded"},
      {"e.png", png, "20000 x 20000 pixels cannot be in this file"},
      {"f.png", png + junk,
       "20000 x 20000 pixels are too many: a file of this length may have 100 million, and 30000 a side"},
  };
  const auto before = peakMegabytes();
  for (const auto& row : rows) {
    EXPECT_FALSE(Loads(row.Name, row.Content)) << row.Name;
    EXPECT_TRUE(error_.contains(Path(row.Name)) && error_.endsWith(QLatin1StringView(row.Error)))
        << error_.toStdString();
  }
  EXPECT_LT(peakMegabytes() - before, 100);
}

TEST_F(PictureFile, CostIsHeldAgainstTheFile) {
  constexpr std::int64_t million = 1'000'000;
  const struct {
    const char* Label;
    DecodingCost Cost;
    const char* Error;
  } rows[] = {
      {"16 bits RGB", {million, 3000, 20000, 360 * million, 1032}, ""},
      {"the largest", {20 * million, 20000, 20000, 1200 * million, 1032}, ""},
      {"one more", {20 * million, 20000, 20001, 1200 * million, 1032}, "are too many"},
      {"more than its length", {10 * million, 20000, 20000, 400 * million, 1032}, "may have 200 million"},
      {"long work", {10 * million, 3000, 20000, 721 * million, 1032}, "may have 720 million"},
      {"cannot be unpacked", {million, 3000, 20000, 120 * million, 64}, "cannot be in this file"},
      {"no rows", {million, 3000, 0, 0, 64}, "cannot be in this file"},
      {"memory", {40 * million, 10000, 10000, million, 64, 401 * million}, "401 MB of memory"},
  };
  for (const auto& row : rows) {
    const QString error = tests::ErrorOf([&] { CheckCost(row.Cost); });
    EXPECT_TRUE(error.contains(QLatin1StringView(row.Error))) << row.Label << error.toStdString();
    EXPECT_EQ(error.isEmpty(), *row.Error == '\0') << row.Label;
  }
}

TEST_F(PictureFile, ContentGoesBeforeTheName) {
  QImage image(3, 2, QImage::Format_RGB32);
  image.fill(0xFF102030);
  ASSERT_TRUE(image.save(Path("pass.png")) && image.save(Path("pass.bmp")));
  for (const char* name : {"pass.png", "pass.bmp"}) {
    EXPECT_TRUE(Loads("pass.jpg", files::ReadFile(Path(name)))) << error_.toStdString();
    EXPECT_EQ(loaded_.Image, image) << name;
  }
}

}  // namespace
}  // namespace pelorin::picture
