#include "files/text_file.h"

#include <gtest/gtest.h>

#include <QFile>

#include "files/atomic_file.h"
#include "files/file_error.h"
#include "files/read_file.h"
#include "tests/support/folder_test.h"

namespace pelorin::files {
namespace {

TEST(CodePage, CharactersHaveTheirBytes) {
  EXPECT_EQ(EncodeText(QStringLiteral("47.5\u00B0N \u20AC\u0178 \u00A0\u00FF")),
            "47.5\xB0N \x80\x9F \xA0\xFF");
  QByteArray every;
  for (int byte = 0; byte < 256; ++byte) every.append(static_cast<char>(byte));
  EXPECT_EQ(EncodeText(DecodeText(every)), every);
  EXPECT_EQ(EncodeText(QStringLiteral("a\u0416b\U0001F6F0c\u0080")), "a?b?c?");
}

class TextFile : public tests::FolderTest {};

TEST_F(TextFile, LinesEndInEitherWay) {
  // The lines are shown joined, each followed by a bar.
  const std::pair<QByteArray, const char*> rows[] = {
      {"a\r\nb\r\n", "a|b|"}, {"a\n\nb", "a||b|"}, {"a\r\n\x1A", "a|"}, {"a\x1A\r\n", "a\x1A|"}, {"", ""},
      {"\r\n", "|"},
  };
  const QString path = Path("list.txt");
  for (const auto& [content, wanted] : rows) {
    ReplaceFile(path, content);
    QByteArray seen;
    for (const QString& line : ReadLines(path)) seen += line.toLatin1() + '|';
    EXPECT_EQ(seen, wanted);
  }
  WriteLines(path, {QStringLiteral("12\u00B0"), QString(), QStringLiteral("z")});
  EXPECT_EQ(ReadFile(path), "12\xB0\r\n\r\nz\r\n");
}

TEST_F(TextFile, FileThatCannotBeReadIsNamedWithTheReason) {
  const QString missing = Path("gr\u00F6\u00DFer.txt"), sparse = Path("sparse.2li");
  QFile file(sparse);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(qint64{40} << 30));
  const std::pair<QString, const char*> rows[] = {
      {missing, "No such file or directory"},
      {Folder(), "directory"},
      {sparse, "it has 42949672960 bytes; at most 268435456 can be read"},
  };
  for (const auto& [path, reason] : rows) {
    const QString error = tests::ErrorOf([&] { ReadLines(path); });
    EXPECT_TRUE(error.startsWith(QStringLiteral("Cannot read %1: ").arg(path)) &&
                error.endsWith(QLatin1StringView(reason)))
        << error.toStdString();
  }
  EXPECT_THROW(ReadFile(QStringLiteral("/dev/zero"), 100'000), FileError) << "does not know its size";
}

}  // namespace
}  // namespace pelorin::files
