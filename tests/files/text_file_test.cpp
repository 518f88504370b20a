#include "files/text_file.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "files/atomic_file.h"
#include "files/file_error.h"
#include "files/read_file.h"

namespace pelorin::files {
namespace {

TEST(TextFile, CharactersHaveTheirBytes) {
  const std::pair<QString, QByteArray> rows[] = {
      {QStringLiteral("47.5\u00B0N"), "47.5\xB0N"},
      {QStringLiteral("1\u00BA"), "1\xBA"},
      {QStringLiteral("\u20AC\u0178"), "\x80\x9F"},
      {QStringLiteral("\u00A0\u00FF"), "\xA0\xFF"},
  };
  for (const auto& [text, bytes] : rows) {
    EXPECT_EQ(EncodeText(text), bytes);
    EXPECT_EQ(DecodeText(bytes), text);
  }
  QByteArray every;
  for (int byte = 0; byte < 256; ++byte) every.append(static_cast<char>(byte));
  EXPECT_EQ(EncodeText(DecodeText(every)), every);
  EXPECT_EQ(EncodeText(QStringLiteral("a\u0416b\U0001F6F0c\u0080")), "a?b?c?");
}

TEST(TextFile, LinesEndInEitherWay) {
  // The lines are shown joined, each followed by a bar.
  const std::pair<QByteArray, const char*> rows[] = {
      {"a\r\nb\r\n", "a|b|"}, {"a\n\nb", "a||b|"}, {"a\r\n\x1A", "a|"}, {"a\x1A\r\n", "a\x1A|"}, {"", ""},
      {"\r\n", "|"},
  };
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("list.txt"));
  for (const auto& [content, wanted] : rows) {
    ReplaceFile(path, content);
    QByteArray seen;
    for (const QString& line : ReadLines(path)) seen += line.toLatin1() + '|';
    EXPECT_EQ(seen, wanted);
  }
  WriteLines(path, {QStringLiteral("12\u00B0"), QString(), QStringLiteral("z")});
  EXPECT_EQ(ReadFile(path), "12\xB0\r\n\r\nz\r\n");
}

TEST(TextFile, FileThatCannotBeReadIsNamedWithTheReason) {
  const QTemporaryDir folder;
  const QString missing = folder.filePath(QStringLiteral("gr\u00F6\u00DFer.txt"));
  const QString sparse = folder.filePath(QStringLiteral("sparse.2li"));
  QFile file(sparse);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(qint64{40} << 30));
  const std::pair<QString, const char*> rows[] = {
      {missing, "No such file or directory"},
      {folder.path(), "directory"},
      {sparse, "it has 42949672960 bytes; at most 268435456 can be read"},
  };
  for (const auto& [path, reason] : rows) {
    try {
      ReadLines(path);
      ADD_FAILURE() << "read: " << path.toStdString();
    } catch (const FileError& error) {
      EXPECT_TRUE(error.Text().startsWith(QStringLiteral("Cannot read %1: ").arg(path)) &&
                  error.Text().endsWith(QLatin1StringView(reason)))
          << error.what();
      EXPECT_EQ(QByteArray(error.what()), error.Text().toUtf8());
    }
  }
  EXPECT_THROW(ReadFile(QStringLiteral("/dev/zero"), 100'000), FileError) << "does not know its size";
}

}  // namespace
}  // namespace pelorin::files
