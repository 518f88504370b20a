#include "app/program_paths.h"
#include "cli/commands.h"
#include "cli/options.h"
#include "cli/overlay_sources.h"
#include "cli/table.h"

namespace pelorin::cli {

void RunMaster(const QStringList& list) {
  const Arguments arguments(QStringLiteral("master"),
                            QStringLiteral("Makes the overlay master: the world at 22 pixels a degree with "
                                           "grid, land, lakes and borders, an 8-bit Windows bitmap."),
                            {{QStringLiteral("countries"), QStringLiteral("FILE"),
                              QStringLiteral("Polygons. Default: the installed Countries.dat.")},
                             {QStringLiteral("output"), QStringLiteral("FILE"),
                              QStringLiteral("Default: Overlay.bmp where the program looks for it.")}},
                            list);
  const QString countries =
      arguments.Text(QStringLiteral("countries"), app::FindDataFile(QStringLiteral("Countries.dat")));
  PrintOut(MakeMaster(countries, arguments.Text(QStringLiteral("output"))) + QLatin1Char('\n'));
}

}  // namespace pelorin::cli
