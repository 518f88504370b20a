#include "app/registry_store.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "files/atomic_file.h"
#include "files/file_error.h"
#include "files/folder_lock.h"
#include "files/read_file.h"

namespace pelorin::app {
namespace {

/// Others hold the lock for as long as a small file takes to be written.
constexpr int kLockPatienceMs = 500;

QByteArray ContentOf(const QString& path) {
  return QFileInfo::exists(path) ? files::ReadFile(path) : QByteArray();
}

/// Keeps what could not be understood beside the file. The same content is kept once, however often the
/// write that should follow fails.
void KeepDamaged(const QString& path, const QByteArray& content) {
  for (int number = 1;; ++number) {
    const QString kept =
        path + QLatin1StringView(".damaged") + (number > 1 ? QString::number(number) : QString());
    if (!QFileInfo::exists(kept)) return files::ReplaceFile(kept, content);
    if (files::ReadFile(kept) == content) return;
  }
}

}  // namespace

RegistryStore::RegistryStore(const QString& folder)
    : path_(QDir(folder).filePath(QStringLiteral("registry.reg"))) {}

QString RegistryStore::DefaultFolder() {
  const QString named = qEnvironmentVariable("PELORIN_CONFIG_DIR");
  if (!named.isEmpty()) return named;
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QLatin1StringView("/Quillfen");
}

RegistryDocument RegistryStore::Read() const {
  try {
    return RegistryDocument(ContentOf(path_));
  } catch (const files::FileError&) {
    return {};
  }
}

void RegistryStore::Update(const std::function<void(RegistryDocument&)>& change) const {
  const QString folder = QFileInfo(path_).path();
  QDir().mkpath(folder);
  // Whoever does not get the lock writes all the same: this way a value is lost only if two programs write in
  // one moment, the other way it is lost for certain.
  const files::FolderLock lock(folder, kLockPatienceMs);
  try {
    const QByteArray earlier = ContentOf(path_);
    RegistryDocument document(earlier);
    change(document);
    const QByteArray content = document.Content();
    if (content == earlier) return;
    if (!document.IsWhole()) KeepDamaged(path_, earlier);
    files::ReplaceFile(path_, content);
  } catch (const files::FileError&) {
    // Settings are no reason to disturb the user: they keep what they were.
  }
}

}  // namespace pelorin::app
