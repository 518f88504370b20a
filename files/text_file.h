#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace pelorin::files {

/// Text to bytes of Windows code page 1252: ° is B0, º is BA, € is 80. A character that the page lacks
/// becomes one "?".
QByteArray EncodeText(const QString& text);

/// Bytes of code page 1252 to text. Every byte has a character: the five unassigned ones (81, 8D, 8F,
/// 90, 9D) become the control characters of the same number, and are encoded back to the same bytes.
QString DecodeText(QByteArrayView bytes);

/// The lines of a text file without their ends, CR LF or LF. The last line counts also without an end;
/// Ctrl-Z characters at the very end, as DOS programs leave them, are no part of the text.
/// Throws FileError "Cannot read <path>: <reason>".
QStringList ReadLines(const QString& path);

/// Replaces a text file by these lines, each ended by CR LF, in code page 1252. Throws FileError; the
/// earlier file is then left as it was.
void WriteLines(const QString& path, const QStringList& lines);

}  // namespace pelorin::files
