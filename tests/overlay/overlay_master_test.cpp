#include "overlay/overlay_master.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>

#include "files/atomic_file.h"
#include "files/file_error.h"
#include "overlay/indexed_raster.h"
#include "overlay/master_search.h"
#include "overlay/palette.h"
#include "tests/support/folder_test.h"

namespace pelorin::overlay {
namespace {

void Silent(const QString&) {}
bool Never(const QString&) { return false; }

QByteArray Number(qint64 value, int bytes) {
  QByteArray text;
  for (int i = 0; i < bytes; ++i) text.append(static_cast<char>(value >> (8 * i)));
  return text;
}

QByteArray Record(int kind, const std::vector<PolyPoint>& points) {
  QByteArray record = Number(static_cast<qint64>(points.size()), 4) + Number(kind, 1);
  for (const PolyPoint& point : points) record += Number(point.Longitude, 2) + Number(point.Latitude, 2);
  return record;
}

/// A square with corners in whole degrees.
std::vector<PolyPoint> Square(int west, int south, int east, int north) {
  const auto at = [](int longitude, int latitude) {
    return PolyPoint{static_cast<std::int16_t>(longitude * 60), static_cast<std::int16_t>(latitude * 60)};
  };
  return {at(west, south), at(east, south), at(east, north), at(west, north)};
}

class OverlayMasterFile : public tests::FolderTest {
 protected:
  QString Write(const QByteArray& content) const {
    files::ReplaceFile(Path("Countries.dat"), content);
    return Path("Countries.dat");
  }
};

TEST_F(OverlayMasterFile, EveryBoxHoldsTheMiddleOfTheMap) {
  const TPolyObject line = LoadPolygons(Write(Record(1, {{-600, 30}, {-120, 40}}))).at(0);
  EXPECT_TRUE(line.MinLongitude == -600 && line.MaxLongitude == 0);
  EXPECT_TRUE(line.MinLatitude == 0 && line.MaxLatitude == 40);
}

TEST_F(OverlayMasterFile, DamageIsAClearErrorAndWritesNothing) {
  const QByteArray good = Record(0, Square(0, 0, 10, 10));
  const std::pair<const char*, QByteArray> rows[] = {
      {"cut in a record", good.chopped(3)},
      {"cut in a head", good + good.left(3)},
      {"negative count", Number(-1, 4) + good},
      {"giant count", Number(0x40000000, 4) + good},
      {"one point too many", Number(15001, 4) + QByteArray(1 + 15001 * 4, 'x')}};
  for (const auto& [label, content] : rows) {
    EXPECT_THROW(GenerateMaster(Write(content), Path("Overlay.bmp"), Silent, Never, 100), files::FileError)
        << label;
    EXPECT_FALSE(QFile::exists(Path("Overlay.bmp"))) << label;
  }
  EXPECT_FALSE(GenerateMaster(Write(""), Path("Overlay.bmp"), Silent, Never, 100));
  EXPECT_THROW(LoadPolygons(Path("missing.dat")), files::FileError);
}

TEST_F(OverlayMasterFile, TheMasterShowsWhatTheFileSays) {
  // Land with a lake in it; the same over the date line's west side; an open line; and a kind that is not
  // drawn.
  const QString countries = Write(Record(0, Square(21, 41, 29, 49)) + Record(8, Square(23, 43, 27, 47)) +
                                  Record(4, Square(-180, -49, -171, -41)) +
                                  Record(1, {{-6000, 300}, {-5700, 300}}) + Record(2, Square(51, 1, 59, 9)));
  QStringList said;
  const auto refuse = [&](const QString& question) {
    said.append(question);
    return false;
  };
  EXPECT_FALSE(GenerateMaster(countries, Path("Overlay.bmp"), Silent, refuse, 5));
  EXPECT_TRUE(said.value(0).startsWith(
      QStringLiteral("Less than 6 MB physical memory available (5 MB found).  Gen")));
  EXPECT_FALSE(QFile::exists(Path("Overlay.bmp")));
  ASSERT_TRUE(GenerateMaster(
      countries, Path("Overlay.bmp"), [&](const QString& text) { said.append(text); }, Never, 6));
  EXPECT_TRUE(said.contains(QStringLiteral("Overlay master image, generating country bondaries 20%")));
  EXPECT_EQ(QFile(Path("Overlay.bmp")).size(), 31364278);
  EXPECT_FALSE(QFile::permissions(Path("Overlay.bmp")) & QFile::WriteOwner);
  const auto master = MasterView::Open(Path("Overlay.bmp"));
  ASSERT_TRUE(master);
  const auto at = [&](double longitude, double latitude) {
    return master->Row(
        static_cast<int>((90 - latitude) * 22 + 0.5))[static_cast<int>((longitude + 180) * 22 + 0.5)];
  };
  const std::pair<std::uint8_t, std::vector<std::pair<double, double>>> rows[] = {
      {kLand, {{22, 45}, {-179.9, -45}}},
      {kBackground, {{25, 45}, {30.5, 45}, {-170.8, -45}, {55, 5}}},
      {kBoundary, {{21, 45}, {23, 45}, {-98, 5}}},
      {kGrid, {{60, 5}, {55, 10}, {-180, 1}, {0, 89.5}}},
  };
  for (const auto& [index, places] : rows) {
    for (const auto& [longitude, latitude] : places) {
      EXPECT_EQ(at(longitude, latitude), index) << longitude << " " << latitude;
    }
  }
  EXPECT_EQ(master->Colours()[kBackground], 0x000080u);
  EXPECT_EQ(master->Colours()[kGrey], 0x808080u);

  // A read-only master of the wrong size is made again.
  QFile file(Path("Overlay.bmp"));
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  ASSERT_TRUE(file.resize(kMasterFileSize - 1));
  file.setPermissions(QFile::ReadOwner);
  EXPECT_FALSE(MasterIsValid(Path("Overlay.bmp")));
  EXPECT_TRUE(GenerateMaster(countries, Path("Overlay.bmp"), Silent, Never, 100));
  EXPECT_TRUE(MasterIsValid(Path("Overlay.bmp")));
}

/// Files of the right size, drawn by nobody but for their tag, stand for masters.
TEST_F(OverlayMasterFile, MastersOfOtherCoastsAreDrawnAnew) {
  const QString countries = Write(Record(0, Square(0, 0, 10, 10)));
  const std::uint32_t tag = CountriesTag(countries);
  EXPECT_EQ(tag, 0x26CBC2D3u) << "CRC-32";
  const QString empty = Path("empty.dat"), missing = Path("missing.dat");
  files::ReplaceFile(empty, "");
  constexpr std::int64_t none = -1, old = 0, other = 77;
  const struct {
    const char* Label;
    std::int64_t Users, Program, Cache;  ///< the tags of what lies there
    bool IsPortable;
    QString Countries;
    const char* DrawnIn;
    std::int64_t Tag;  ///< of the one that is used
    qsizetype Told = 0;
  } rows[] = {
      {"there is none", none, none, none, false, countries, "cache", tag},
      {"there is none, portable", none, none, none, true, countries, "program", tag},
      {"of these coasts", none, none, tag, false, countries, "", tag},
      {"of other coasts", none, none, other, false, countries, "cache", tag},
      {"cache of an earlier version", none, none, old, false, countries, "cache", tag},
      {"put beside the program by the user", none, old, other, true, countries, "", old},
      {"left beside an installed program by an earlier version", none, old, none, false, countries, "cache",
       tag},
      {"drawn beside an installed program", none, other, none, false, countries, "cache", tag},
      {"the user's data", other, none, tag, false, countries, "", other},
      {"no coasts known", none, none, other, false, QString(), "", other},
      {"coasts without a polygon", none, none, other, false, empty, "", other, 1},
      {"coasts that cannot be read", none, none, other, false, missing, "", other, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Label);
    const QTemporaryDir root;
    const auto folder = [&root](const char* name) { return root.filePath(QLatin1StringView(name)); };
    for (const auto& [name, content] :
         {std::pair{"users", row.Users}, {"program", row.Program}, {"cache", row.Cache}}) {
      QDir().mkpath(folder(name));
      QFile file(folder(name) + QStringLiteral("/Overlay.bmp"));
      if (content == none) continue;
      ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(kMasterFileSize));
      file.write("BM" + QByteArray(4, 0) + Number(content, 4) + QByteArray(4, 0) + Number(40, 4));
    }
    QStringList told;
    const MasterFolders folders{folder("users"), folder("program"), folder("cache"), row.IsPortable};
    const auto master = FindMaster(
        folders, row.Countries, Silent, [](const QString&) { return true; },
        [&told](const QString& text) { told.append(text); });
    ASSERT_TRUE(master);
    EXPECT_EQ(master->Tag(), row.Tag);
    EXPECT_EQ(told.size(), row.Told) << told.join(u'\n').toStdString();
    EXPECT_TRUE(told.isEmpty() || told[0].contains(row.Countries));
    for (const char* name : {"users", "program", "cache"}) {
      const auto lying = MasterView::Open(folder(name) + QStringLiteral("/Overlay.bmp"));
      const bool isDrawn = lying && lying->Colours()[kLand] == 0x008000u;
      EXPECT_EQ(isDrawn, std::string(name) == row.DrawnIn) << name;
    }
  }
}

TEST(MasterProjection, RoundsToTheNearestPixel) {
  const std::pair<int, int> columns[] = {{-10800, 0},   {-10799, 0}, {-10798, 1},  {0, 3960},
                                         {10800, 7920}, {10801, 0},  {-10803, -1}, {-10830, -11}};
  for (const auto& [minutes, column] : columns) EXPECT_EQ(MasterColumn(minutes), column) << minutes;
  EXPECT_EQ(MasterRow(5400), 0);
  EXPECT_EQ(MasterRow(-5400), 3960);
  EXPECT_EQ(MasterRow(1), 1980);
  EXPECT_EQ(MasterRow(2), 1979);
}

TEST(IndexedRaster, ShapesKeepToTheirEdges) {
  picture::IndexedImage image{12, 10, std::vector<std::uint8_t>(120)};
  IndexedRaster raster(image);
  const auto count = [&](int index) { return std::count(image.Pixels.begin(), image.Pixels.end(), index); };
  raster.Line({2, 2}, {5, 2}, 1);
  EXPECT_EQ(count(1), 3);  // without the last pixel
  EXPECT_EQ(image.Row(2)[5], 0);
  const PixelPoint frame[] = {{6, 4}, {10, 4}, {10, 8}, {6, 8}};
  raster.Polygon(frame, 2, 3);
  EXPECT_EQ(count(2), 16);
  EXPECT_EQ(count(3), 9);
  // A shape far beyond the image fills it from edge to edge and harms nothing.
  const PixelPoint wide[] = {{-50, -50}, {90, -50}, {90, 70}, {-50, 70}};
  raster.Polygon(wide, 4, 5);
  EXPECT_EQ(count(5), 120);
}

}  // namespace
}  // namespace pelorin::overlay
