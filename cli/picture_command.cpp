#include "app/time_zone.h"
#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"
#include "files/file_error.h"
#include "orbit/scalar_math.h"
#include "picture/picture_file.h"
#include "swath/picture_lookup.h"

namespace pelorin::cli {
namespace {

/// What there is to say of a picture that is not whole, or no picture at all: it was found all the same.
void SayDamage(const QString& path) {
  try {
    const QString damage = picture::LoadRecording(path).Damage;
    if (!damage.isEmpty()) Say(damage);
  } catch (const files::FileError& error) {
    Say(error.Text());
  }
}

}  // namespace

void RunPicture(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("picture"),
      QStringLiteral("Finds the received picture of a pass in the picture folders: two minutes before to "
                     "nine after the time given, in "
                     "UTC and by the local clock."),
      {{QStringLiteral("find"), QStringLiteral("MMDDHHMM"),
        QStringLiteral("Month, day, hour and minute of the pass, UTC.")},
       {QStringLiteral("folders"), QStringLiteral("DIR[,DIR...]"),
        QStringLiteral("Where to look, in this order. Default: the settings' picture folders.")},
       {QStringLiteral("channel"), QStringLiteral("0|1|2"),
        QStringLiteral("Preferred picture: 0 visible, 1 infrared, 2 plain. Default: 0.")}},
      list);
  const QString key = arguments.Required(QStringLiteral("find"));
  const QStringList folders =
      arguments.Has(QStringLiteral("folders"))
          ? arguments.Text(QStringLiteral("folders")).split(QLatin1Char(','), Qt::SkipEmptyParts)
          : app::FromCommaText(arguments.Settings().ImagePathList.Value);
  // A picture's name has no year.
  const app::YearOffsets local = app::LocalTimeZone().OffsetsIn(TakeApart(orbit::NowUTC()).Year);
  swath::FoundPicture found;
  try {
    found = swath::LookUpPicture(key, arguments.Whole(QStringLiteral("channel"), 0, 0, 2), folders,
                                 local.StandardMinutes, local.DaylightMinutes);
  } catch (const orbit::ConvertError& error) {
    throw UsageError(QStringLiteral("--find wants MMDDHHMM, as in 02231015: ") +
                     QString::fromUtf8(error.what()));
  }
  if (found.Path.isEmpty()) {
    throw Failure(QStringLiteral("There is no picture of %1 in %2; name other folders with --folders")
                      .arg(key, folders.join(QStringLiteral(", "))));
  }
  PrintOut(found.Path + QLatin1Char('\n'));
  SayDamage(found.Path);
}

}  // namespace pelorin::cli
