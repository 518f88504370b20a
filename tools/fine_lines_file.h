#pragma once

#include <QByteArray>
#include <vector>

#include "lines/fine_lines.h"
#include "tools/rings.h"

namespace pelorin::tools {

/// A line before it is cut: continuous in longitude, of any turn; a closed one ends where it began.
struct SourceLine {
  lines::LineKind Kind = lines::LineKind::Coast;
  Points Line;
};

/// A ring as a line: closed by its first point. One round the pole comes to its own start a turn farther; the
/// pole itself is no part of it.
Points OutlineOf(const Ring& ring);

/// The bytes of the file: lines rounded to its unit, cut at the sides of tiles, tile by tile.
/// overlay/fine_lines reads them.
QByteArray EncodeFineLines(const std::vector<SourceLine>& lines);

}  // namespace pelorin::tools
