#include "cli/coast_ground.h"

#include "app/program_paths.h"
#include "cli/options.h"
#include "overlay/master_surface.h"

namespace pelorin::cli {

CoastGround::CoastGround(const overlay::MapSources& sources)
    : master_(sources.Borrowed().Master),
      shores_(lines::FindFineLines(app::FindDataFile(QStringLiteral("Coastlines.dat")))) {
  if (master_ != nullptr) return;
  throw Failure(
      QStringLiteral("There is no overlay master to compare the picture with; make it with \"pelorin-cli "
                     "master\", or name one with --master"));
}

align::Ground CoastGround::Borrowed() const {
  return {overlay::SurfacesIn(*master_), shores_.Lines ? &*shores_.Lines : nullptr, shores_.Problem};
}

}  // namespace pelorin::cli
