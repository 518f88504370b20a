#pragma once

#include <QByteArray>
#include <QList>
#include <vector>

#include "orbit/element_file.h"
#include "orbit/satellite.h"

namespace pelorin::elements {

/// The text of an element file, or of a service's answer, and the sets in it.
struct ElementData {
  orbit::ElementForm Form = orbit::ElementForm::TwoLine;
  QByteArray Bytes;
  /// Nothing is cut off, and nothing else is in it. Files of old may lack that and be of use.
  bool IsWhole = false;
  std::vector<orbit::TSatellite> Sets;  ///< that describe an orbit, in their order
};

/// What a text looks like.
orbit::ElementForm FormLike(const QByteArray& bytes);

ElementData ElementDataOf(const QByteArray& bytes, orbit::ElementForm form);
/// Of the form that it looks like.
ElementData ElementDataOf(const QByteArray& bytes);

/// Lines without their ends: CR LF, LF or CR.
QList<QByteArray> SplitLines(const QByteArray& text);

/// Whether lines go name, "1 …", "2 …" from the first to the last, and are three at least. The last group may
/// end early.
bool IsValidElementData(const QList<QByteArray>& lines);

/// Whether every line 1 and line 2 has its columns, and both belong to one satellite: half a line, as a
/// broken connection leaves it, reads as another orbit. A name without lines may stand at the end.
bool HasWholeSets(const QList<QByteArray>& lines);

bool IsWebPage(const QByteArray& text);

}  // namespace pelorin::elements
