#include "swath/recording_text.h"

namespace pelorin::swath {
namespace {

QString SourceOf(KnownFrom known, const QString& byUser) {
  switch (known) {
    case KnownFrom::Table:
      return QStringLiteral("the table of scanners");
    case KnownFrom::Name:
      return QStringLiteral("its kind of name");
    case KnownFrom::Product:
      return QStringLiteral("the product file");
    case KnownFrom::User:
      return byUser;
    case KnownFrom::Alignment:
      return QStringLiteral("an alignment");
    case KnownFrom::Default:
      break;
  }
  return QStringLiteral("the satellite's time");
}

QString SourceOf(StartFrom known) {
  switch (known) {
    case StartFrom::Stamps:
      return QStringLiteral("the stamps of its lines");
    case StartFrom::Coasts:
      return QStringLiteral("the picture's coasts");
    case StartFrom::NameSecond:
      return QStringLiteral("a clock that tells the second");
    case StartFrom::NameMinute:
      return QStringLiteral("its name, to the minute");
    case StartFrom::Pass:
      break;
  }
  return QStringLiteral("its pass, to the minute");
}

}  // namespace

QString WordsOf(const Stored& lies) {
  const QString turned =
      lies.Turned ? QStringLiteral("turned by 180 degrees") : QStringLiteral("as received");
  return lies.Mirrored ? turned + QStringLiteral(", left and right exchanged") : turned;
}

QStringList DescribeRecording(const Recording& recording, const QString& byUser) {
  const Instrument& scanner = recording.SeenBy;
  const Attitude& attitude = recording.Offsets;
  QStringList lines{
      QStringLiteral("Scanner: %1, %2 columns of %3 degrees, by %4; roll %5, pitch %6, yaw %7, by %8.")
          .arg(QString::fromStdString(scanner.Name))
          .arg(scanner.Line.Columns)
          .arg(scanner.Line.AngleDeg)
          .arg(SourceOf(recording.ScannerIsFrom, byUser))
          .arg(attitude.RollDeg)
          .arg(attitude.PitchDeg)
          .arg(attitude.YawDeg)
          .arg(SourceOf(recording.OffsetsAreFrom, byUser))};
  const QString start =
      QString::fromStdString(orbit::FormatDateTime("yyyy mmm dd, hh:nn:ss", recording.Start));
  const QString kind = recording.LiesIsFrom == KnownFrom::Default
                           ? QStringLiteral("what is usual for its kind")
                           : SourceOf(recording.LiesIsFrom, byUser);
  lines.append(QStringLiteral("Begin: %1 UTC, by %2; %3-bound; stored %4, by %5.")
                   .arg(start, SourceOf(recording.StartIsFrom),
                        recording.SouthBound ? QStringLiteral("south") : QStringLiteral("north"),
                        WordsOf(recording.Lies), kind));
  return lines;
}

}  // namespace pelorin::swath
