#include "files/text_file.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "files/atomic_file.h"
#include "files/read_file.h"

namespace pelorin::files {
namespace {

constexpr char16_t kFirstOwn = 0x80;
constexpr char16_t kEndOfOwn = 0xA0;
constexpr char kCtrlZ = '\x1A';

/// The characters of bytes 80 to 9F; all other bytes are Latin-1. Own table, because what a library's
/// codec makes of the unassigned bytes and of missing characters differs between its builds.
constexpr std::array<char16_t, kEndOfOwn - kFirstOwn> kOwnCharacters = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80 …
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88 …
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90 …
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98 …
};

char EncodeCharacter(char16_t character) {
  const auto own = std::find(kOwnCharacters.begin(), kOwnCharacters.end(), character);
  if (own != kOwnCharacters.end()) {
    return static_cast<char>(kFirstOwn + std::distance(kOwnCharacters.begin(), own));
  }
  const bool isLatin1 = character < kFirstOwn || (character >= kEndOfOwn && character <= 0xFF);
  return isLatin1 ? static_cast<char>(character) : '?';
}

}  // namespace

QByteArray EncodeText(const QString& text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (const QChar& character : text) {
    // The second half of a character beyond the basic plane: its first half has become the "?".
    const bool isSecondHalf =
        character.isLowSurrogate() && &character != text.constData() && (&character)[-1].isHighSurrogate();
    if (!isSecondHalf) bytes.append(EncodeCharacter(character.unicode()));
  }
  return bytes;
}

QString DecodeText(QByteArrayView bytes) {
  QString text = QString::fromLatin1(bytes);
  for (QChar& character : text) {
    const char16_t code = character.unicode();
    if (code >= kFirstOwn && code < kEndOfOwn) character = QChar(kOwnCharacters[code - kFirstOwn]);
  }
  return text;
}

QStringList ReadLines(const QString& path) {
  QByteArray content = ReadFile(path);
  while (content.endsWith(kCtrlZ)) content.chop(1);
  QStringList lines;
  qsizetype start = 0;
  while (start < content.size()) {
    qsizetype end = content.indexOf('\n', start);
    if (end < 0) end = content.size();
    QByteArrayView line(content.constData() + start, end - start);
    if (line.endsWith('\r')) line.chop(1);
    lines.append(DecodeText(line));
    start = end + 1;
  }
  return lines;
}

void WriteLines(const QString& path, const QStringList& lines) {
  QByteArray content;
  for (const QString& line : lines) content += EncodeText(line) + "\r\n";
  ReplaceFile(path, content);
}

}  // namespace pelorin::files
