#include "elements/element_data.h"

#include <QJsonDocument>

#include "orbit/omm.h"

namespace pelorin::elements {
namespace {

using orbit::ElementForm;

/// Columns of a line that are used; the checksum after them is not.
constexpr qsizetype kLineColumns = 68;

bool IsPairOfLines(const QByteArray& line1, const QByteArray& line2) {
  const auto number = [](const QByteArray& line) { return line.mid(2, 5).trimmed(); };
  return line1.size() >= kLineColumns && line2.size() >= kLineColumns && !number(line1).isEmpty() &&
         number(line1) == number(line2) && line1[23] == '.' && line2[11] == '.' && line2[20] == '.' &&
         line2[37] == '.' && line2[46] == '.' && line2[54] == '.';
}

bool IsWhole(const QByteArray& bytes, ElementForm form) {
  switch (form) {
    case ElementForm::Csv:
      return orbit::IsWholeOmmCsv({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    case ElementForm::Json:
      return !QJsonDocument::fromJson(bytes).isNull();
    case ElementForm::TwoLine:
      break;
  }
  const QList<QByteArray> lines = SplitLines(bytes);
  return !IsWebPage(bytes) && IsValidElementData(lines) && HasWholeSets(lines);
}

/// Lines ended as the reader of files knows them.
std::string ReadableText(const QByteArray& bytes, ElementForm form) {
  return (form == ElementForm::TwoLine ? SplitLines(bytes).join('\n') : bytes).toStdString();
}

}  // namespace

ElementForm FormLike(const QByteArray& bytes) {
  const QByteArray beginning = bytes.left(1000).trimmed();
  if (beginning.startsWith('[') || beginning.startsWith('{')) return ElementForm::Json;
  const QByteArray firstLine = beginning.left(beginning.indexOf('\n')).toUpper();
  return firstLine.contains(',') && firstLine.contains("OBJECT_NAME") ? ElementForm::Csv
                                                                      : ElementForm::TwoLine;
}

ElementData ElementDataOf(const QByteArray& bytes, ElementForm form) {
  ElementData data{form, bytes, IsWhole(bytes, form), {}};
  std::vector<orbit::RejectedSet> rejected;
  orbit::ReadSetsOf(
      ReadableText(bytes, form), form, {},
      [&data](std::string_view, orbit::TSatellite&& set) { data.Sets.push_back(std::move(set)); }, rejected);
  return data;
}

ElementData ElementDataOf(const QByteArray& bytes) { return ElementDataOf(bytes, FormLike(bytes)); }

QList<QByteArray> SplitLines(const QByteArray& text) {
  QList<QByteArray> lines;
  qsizetype start = 0;
  while (start < text.size()) {
    qsizetype end = start;
    while (end < text.size() && text[end] != '\r' && text[end] != '\n') ++end;
    lines.append(text.mid(start, end - start));
    const bool isPair = end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n';
    start = end + (isPair ? 2 : 1);
  }
  return lines;
}

bool IsValidElementData(const QList<QByteArray>& lines) {
  if (lines.size() < 3) return false;
  for (qsizetype index = 0; index < lines.size(); ++index) {
    const QByteArray& line = lines[index];
    const bool isLast = index + 1 == lines.size();
    switch (index % 3) {
      case 0:
        // A set without a name would be passed over when the file is read; an empty last line means nothing.
        if (line.startsWith(' ') || (line.isEmpty() && !isLast)) return false;
        break;
      case 1:
        if (!line.startsWith("1 ")) return false;
        break;
      default:
        if (!line.startsWith("2 ")) return false;
    }
  }
  return true;
}

bool HasWholeSets(const QList<QByteArray>& lines) {
  for (qsizetype index = 1; index < lines.size(); index += 3) {
    if (index + 1 >= lines.size() || !IsPairOfLines(lines[index], lines[index + 1])) return false;
  }
  return true;
}

bool IsWebPage(const QByteArray& text) { return text.trimmed().startsWith('<'); }

}  // namespace pelorin::elements
