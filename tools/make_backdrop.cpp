// Makes the world map's backdrop in three sizes from Countries.dat and etopo5.elev.

#include <QFile>
#include <QImage>
#include <stdexcept>

#include "files/read_file.h"
#include "picture/jpeg_image.h"
#include "tools/backdrop.h"
#include "tools/maker.h"

namespace pelorin::tools {
namespace {

constexpr int kLargeWidth = 4096;
constexpr int kJpegQuality = 88;

/// `large`, `user` and `small` are the files to write: 4096, 2048 and 1024 pixels wide.
void MakeBackdrop(const char* countries, const char* topography, const char* large, const char* user,
                  const char* small) {
  const auto records = overlay::LoadPolygons(QFile::decodeName(countries));
  if (records.empty()) throw std::runtime_error("no records in the polygon file");
  const ElevationGrid heights(files::ReadFile(QFile::decodeName(topography)));
  const QImage picture = RenderBackdrop(records, heights, kLargeWidth);
  const auto reduced = [&](int by) {
    return picture.scaled(picture.size() / by, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  };
  picture::SaveJpeg(picture, QFile::decodeName(large), kJpegQuality);
  picture::SaveJpeg(reduced(2), QFile::decodeName(user), kJpegQuality);
  picture::SaveJpeg(reduced(4), QFile::decodeName(small), kJpegQuality);
}

}  // namespace
}  // namespace pelorin::tools

int main(int argc, char** argv) {
  return pelorin::tools::RunMaker(
      argc, argv, 5, "<Countries.dat> <etopo5.elev> <large.jpg> <user.jpg> <small.jpg>",
      [&] { pelorin::tools::MakeBackdrop(argv[1], argv[2], argv[3], argv[4], argv[5]); });
}
