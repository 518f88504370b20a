#include "files/text_file.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "files/atomic_file.h"
#include "files/file_error.h"
#include "files/read_file.h"

namespace pelorin::files {
namespace {

TEST(TextFile, CharactersHaveTheirBytes) {
  const struct {
    const char* Label;
    QString Text;
    QByteArray Bytes;
  } rows[] = {
      {"degree", QStringLiteral("47.5\u00B0N"), "47.5\xB0N"},
      {"ordinal", QStringLiteral("1\u00BA"), "1\xBA"},
      {"euro", QStringLiteral("\u20AC"), "\x80"},
      {"last of the own range", QStringLiteral("\u0178"), "\x9F"},
      {"Latin-1 begins and ends", QStringLiteral("\u00A0\u00FF"), "\xA0\xFF"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(EncodeText(row.Text), row.Bytes) << row.Label;
    EXPECT_EQ(DecodeText(row.Bytes), row.Text) << row.Label;
  }
  EXPECT_EQ(EncodeText(QStringLiteral("a\u0416b\U0001F6F0c\u0080")), "a?b?c?");
}

TEST(TextFile, EveryByteSurvivesTheRoundTrip) {
  QByteArray bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.append(static_cast<char>(byte));
  EXPECT_EQ(EncodeText(DecodeText(bytes)), bytes);
}

TEST(TextFile, LinesEndInEitherWay) {
  const struct {
    const char* Label;
    QByteArray Content;
    QStringList Lines;
  } rows[] = {
      {"CR LF", "a\r\nb\r\n", {QStringLiteral("a"), QStringLiteral("b")}},
      {"LF, last line open", "a\n\nb", {QStringLiteral("a"), QString(), QStringLiteral("b")}},
      {"Ctrl-Z at the end", "a\r\n\x1A", {QStringLiteral("a")}},
      {"Ctrl-Z within", "a\x1A\r\n", {QStringLiteral("a\x1A")}},
      {"empty", "", {}},
      {"one empty line", "\r\n", {QString()}},
  };
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("list.txt"));
  for (const auto& row : rows) {
    ReplaceFile(path, row.Content);
    EXPECT_EQ(ReadLines(path), row.Lines) << row.Label;
  }
}

TEST(TextFile, LinesAreWrittenWithCrLf) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("list.txt"));
  WriteLines(path, {QStringLiteral("12\u00B0"), QString(), QStringLiteral("z")});
  EXPECT_EQ(ReadFile(path), "12\xB0\r\n\r\nz\r\n");
}

TEST(TextFile, MissingFileIsNamedWithTheReason) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("gr\u00F6\u00DFer.txt"));
  try {
    ReadLines(path);
    FAIL() << "a missing file was read";
  } catch (const FileError& error) {
    EXPECT_EQ(error.Text(), QStringLiteral("Cannot read %1: No such file or directory").arg(path));
    EXPECT_EQ(QByteArray(error.what()), error.Text().toUtf8());
  }
  EXPECT_THROW(ReadLines(folder.path()), FileError);
}

}  // namespace
}  // namespace pelorin::files
