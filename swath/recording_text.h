#pragma once

#include <QStringList>

#include "swath/recording.h"

namespace pelorin::swath {

/// How a picture is stored: "as received", "turned by 180 degrees", and whether left and right are exchanged.
QString WordsOf(const Stored& lies);

/// What is known of a recording, and from where: a line of its scanner and attitude, one of its begin and of
/// how it is stored. `byUser` is what to call what the user said. It needs its scanner.
QStringList DescribeRecording(const Recording& recording, const QString& byUser = QStringLiteral("you"));

}  // namespace pelorin::swath
