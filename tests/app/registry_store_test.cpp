#include "app/registry_store.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>
#include <iterator>

#include "files/atomic_file.h"
#include "files/read_file.h"

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

const QString kKey = u"\\Software\\Quillfen\\Pelorin"_s;
const QString kName = u"Name"_s;
const QByteArray kKeyLine = "[Software\\\\Quillfen\\\\Pelorin]\n";
const QByteArray kHead = "Pelorin settings 1\n\n" + kKeyLine;

class RegistryStoreTest : public testing::Test {
 protected:
  const QTemporaryDir folder_;
  const RegistryStore store_{folder_.path()};
  const QString path_ = folder_.filePath(u"registry.reg"_s);
};

TEST_F(RegistryStoreTest, KindsStayApartAndCaseDoesNot) {
  const QByteArray other = "Pelorin settings 1\n\n[A\\\\B]\n\"Depth\"=dword:00000007\n\n";
  files::ReplaceFile(path_, QByteArray(other).replace('\n', "\r\n"));
  store_.WriteString(kKey, kName, u"C:\\\"\r\n"_s);
  EXPECT_EQ(files::ReadFile(path_), other + kKeyLine + "\"Name\"=\"C:\\\\\\\"\\r\\n\"\n");
  EXPECT_EQ(store_.ReadString(kKey, kName), u"C:\\\"\r\n"_s);
  EXPECT_EQ(store_.ReadInteger(kKey, kName), std::nullopt);
  store_.WriteInteger(kKey.toUpper(), kName.toUpper(), -2);
  EXPECT_EQ(files::ReadFile(path_), other + kKeyLine + "\"Name\"=dword:fffffffe\n");
  EXPECT_EQ(store_.ReadString(kKey, kName), std::nullopt);
  EXPECT_EQ(store_.ReadInteger(kKey.toLower() + u'\\', kName.toLower()), -2);
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 1) << "no lock, no damaged file";
}

TEST_F(RegistryStoreTest, DamagedFileIsReadAsFarAsItGoesAndKept) {
  const QByteArray good = "\"Good\"=dword:00000005\n";
  const struct {
    const char* Label;
    QByteArray Content;
    int Good;
  } rows[] = {
      {"cut within a number", kHead + good + "\"Name\"=dword:0000", 5},
      {"cut within a text", kHead + good + "\"Name\"=\"C:\\", 5},
      {"unknown escape", kHead + good + "\"Name\"=\"a\\tb\"\n", 5},
      {"said twice", kHead + "\"GOOD\"=dword:00000004\n" + good, 5},
      {"not UTF-8", kHead + "\"Name\"=\"\xE9\"\n" + good, 5},
      {"another header", QByteArray(kHead).replace('1', '2') + good, 5},
      {"value below a garbled key", kHead + "[Softw\n" + good, 0},
      {"binary", QByteArray("\0\x01\xFF\n\0[", 6), 0},
  };
  int count = 0;
  for (const auto& row : rows) {
    files::ReplaceFile(path_, row.Content);
    EXPECT_EQ(store_.ReadString(kKey, kName), std::nullopt) << row.Label;
    for (const QString& text : {u"new"_s, u"newer"_s}) store_.WriteString(kKey, kName, text);
    EXPECT_EQ(store_.ReadString(kKey, kName), u"newer"_s) << row.Label;
    EXPECT_EQ(store_.ReadInteger(kKey, u"Good"_s).value_or(0), row.Good) << row.Label;
    const QString kept = path_ + (++count > 1 ? u".damaged%1"_s.arg(count) : u".damaged"_s);
    EXPECT_EQ(files::ReadFile(kept), row.Content) << row.Label;
  }
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), std::ssize(rows) + 1) << "each is kept once";
}

TEST_F(RegistryStoreTest, FailuresAreSilentAndDestroyNothing) {
  store_.WriteInteger(kKey, kName, 2);
  QLockFile other(path_ + u".lock"_s);
  ASSERT_TRUE(other.tryLock(0));
  store_.WriteInteger(kKey, kName, 3);
  EXPECT_EQ(store_.ReadInteger(kKey, kName), 2);
  EXPECT_NO_THROW(RegistryStore(path_).WriteInteger(kKey, kName, 1)) << "a file where its folder should be";
}

}  // namespace
}  // namespace pelorin::app
