#include "app/registry_store.h"

#include <gtest/gtest.h>

#include <QDir>
#include <iterator>

#include "files/atomic_file.h"
#include "files/folder_lock.h"
#include "files/read_file.h"
#include "tests/support/folder_test.h"

namespace pelorin::app {
namespace {

using namespace Qt::StringLiterals;

const QString kKey = u"\\Software\\Quillfen\\Pelorin"_s;
const QString kName = u"Name"_s;
const QByteArray kKeyLine = "[Software\\\\Quillfen\\\\Pelorin]\n";
const QByteArray kHead = "Pelorin settings 1\n\n" + kKeyLine;

class RegistryStoreTest : public tests::FolderTest {
 protected:
  static void SetIn(const RegistryStore& store, const QString& keyPath, const QString& name,
                    const RegistryDocument::Value& value) {
    store.Update([&](RegistryDocument& document) { document.Set(keyPath, name, value); });
  }
  void Set(const RegistryDocument::Value& value) const { SetIn(store_, kKey, kName, value); }
  std::optional<QString> Text() const { return store_.Read().Find<QString>(kKey, kName); }
  std::optional<int> Integer(const QString& name) const {
    return store_.Read().Find<std::int32_t>(kKey.toLower() + u'\\', name);
  }

  /// How many files there are beside the settings'.
  qsizetype Others() const { return QDir(Folder()).entryList(QDir::Files).size() - 1; }

  const RegistryStore store_{Folder()};
  const QString path_ = Path("registry.reg");
};

TEST_F(RegistryStoreTest, KindsStayApartAndCaseDoesNot) {
  const QByteArray other = "Pelorin settings 1\n\n[A\\\\B]\n\"Depth\"=dword:00000007\n\n";
  files::ReplaceFile(path_, QByteArray(other).replace('\n', "\r\n"));
  Set(u"C:\\\"\r\n"_s);
  EXPECT_EQ(files::ReadFile(path_), other + kKeyLine + "\"Name\"=\"C:\\\\\\\"\\r\\n\"\n");
  EXPECT_EQ(Text(), u"C:\\\"\r\n"_s);
  EXPECT_EQ(Integer(kName), std::nullopt);
  SetIn(store_, kKey.toUpper(), kName.toUpper(), -2);
  EXPECT_EQ(files::ReadFile(path_), other + kKeyLine + "\"Name\"=dword:fffffffe\n");
  EXPECT_EQ(Text(), std::nullopt);
  EXPECT_EQ(Integer(kName.toLower()), -2);
  EXPECT_EQ(Others(), 0) << "no lock, no damaged file";
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
    EXPECT_EQ(Text(), std::nullopt) << row.Label;
    for (const QString& text : {u"new"_s, u"newer"_s}) Set(text);
    EXPECT_EQ(Text(), u"newer"_s) << row.Label;
    EXPECT_EQ(Integer(u"Good"_s).value_or(0), row.Good) << row.Label;
    const QString kept = path_ + (++count > 1 ? u".damaged%1"_s.arg(count) : u".damaged"_s);
    EXPECT_EQ(files::ReadFile(kept), row.Content) << row.Label;
  }
  EXPECT_EQ(Others(), std::ssize(rows)) << "each is kept once";
}

TEST_F(RegistryStoreTest, NoLockCostsAValueAndNoFailureIsLoud) {
  // What earlier versions took for a lock, of a program that may still run.
  files::ReplaceFile(path_ + u".lock"_s, "1\npelorin\nanother.host\n");
  Set(2);
  EXPECT_EQ(Integer(kName), 2);
  const files::FolderLock stuck(Folder(), 0);
  Set(3);
  EXPECT_EQ(Integer(kName), 3) << "somebody who never lets go";
  EXPECT_NO_THROW(SetIn(RegistryStore(path_), kKey, kName, 1)) << "a file where its folder should be";
}

/// While one program reads, changes and writes, another one waits.
TEST_F(RegistryStoreTest, ProgramsWriteOneAfterTheOther) {
  bool isFree = true;
  store_.Update([&](RegistryDocument& document) {
    document.Set(kKey, kName, 1);
    isFree = files::FolderLock(Folder(), 0).IsHeld();
  });
  EXPECT_FALSE(isFree);
  EXPECT_TRUE(files::FolderLock(Folder(), 0).IsHeld()) << "and it ends";
}

}  // namespace
}  // namespace pelorin::app
