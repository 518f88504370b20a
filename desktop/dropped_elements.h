#pragma once

#include <QStringList>

#include "session/session.h"

class QMimeData;

namespace pelorin::desktop {

/// The element files, and folders, among what is dragged: those of a known extension, or ".txt".
QStringList ElementFilesAmong(const QMimeData& dragged);

/// Adds them to the archive, says in a box what was new, and uses it from now on.
void TakeDroppedElements(session::Session& session, const QStringList& files);

}  // namespace pelorin::desktop
