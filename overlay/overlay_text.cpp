#include "overlay/overlay_text.h"

#include <QStringList>

namespace pelorin::overlay {
namespace {

constexpr QChar kOrdinalSign(0xBA);  // stands for a degree sign; code page 1252 has both

QString ItemText(TextItem item, const PassText& pass) {
  const auto format = [](const char* pattern, orbit::TDateTime moment) {
    return QString::fromStdString(FormatDateTime(pattern, moment));
  };
  switch (item) {
    case kTextName:
      return pass.SatelliteName;
    case kTextDate:
      return format("yyyy mmm dd", pass.Start);
    case kTextAt:
      return QStringLiteral("at");
    case kTextTimes:
      return format("hh:nn-", pass.Start) + format("hh:nn", pass.End);
    case kTextDirection:
      return pass.SouthBound ? QStringLiteral("South") : QStringLiteral("North");
    case kTextElevation:
      return QString::number(pass.ElevationDeg, 'f', 0) + kOrdinalSign;
  }
  return QString();
}

}  // namespace

const std::array<TextItemChoice, 6>& TextItemChoices() {
  static const std::array<TextItemChoice, 6> choices{{
      {kTextName, QStringLiteral("Name"), QStringLiteral("NOAA 15  ")},
      {kTextDate, QStringLiteral("Date"), QStringLiteral("2000 Dec 25  ")},
      {kTextAt, QStringLiteral("at"), QStringLiteral("at  ")},
      {kTextTimes, QStringLiteral("Times"), QStringLiteral("12:34-12:43  ")},
      {kTextDirection, QStringLiteral("Direction"), QStringLiteral("North  ")},
      {kTextElevation, QStringLiteral("Elevation"),
       QStringLiteral("45") + kOrdinalSign + QStringLiteral("  ")},
  }};
  return choices;
}

std::uint8_t MaskItems(int stored) {
  return static_cast<std::uint8_t>(
      stored & (kTextName | kTextDate | kTextTimes | kTextDirection | kTextElevation | kTextAt));
}

QString PreviewText(std::uint8_t items) {
  QString text;
  for (const TextItemChoice& choice : TextItemChoices()) {
    if ((items & choice.Item) != 0) text += choice.Sample;
  }
  return text;
}

QString TextLine(std::uint8_t items, const PassText& pass) {
  QStringList texts;
  for (const TextItemChoice& choice : TextItemChoices()) {
    if ((items & choice.Item) != 0) texts.append(ItemText(choice.Item, pass));
  }
  return texts.join(QStringLiteral("  "));
}

}  // namespace pelorin::overlay
