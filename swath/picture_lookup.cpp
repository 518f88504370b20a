#include "swath/picture_lookup.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <optional>
#include <vector>

#include "swath/decoder_product.h"
#include "swath/picture_name.h"

namespace pelorin::swath {
namespace {

using orbit::TDateTime;

constexpr int kMinutesBefore = 2;
constexpr int kMinutesScanned = 12;
constexpr qsizetype kStampLength = 8;  // "mmddhhnn"

/// The name of a picture of so many minutes after `start`.
QString BaseNameOf(TDateTime start, int minutes) {
  const TDateTime time{start.Days + minutes / orbit::kMinutesPerDay};
  return QString::fromStdString(FormatDateTime("mmddhhnn", time));
}

TDateTime FirstSearched(TDateTime pass) { return {pass.Days - kMinutesBefore / orbit::kMinutesPerDay}; }

QString WithOneSlash(QString folder) {
  while (folder.endsWith(u'\\') || folder.endsWith(u'/')) folder.chop(1);
  return folder + u'/';
}

/// The user's picture folders. A scan asks for hundreds of names, so each folder is read once, and not
/// before it is needed: it may lie on a slow network.
class PictureFolders {
 public:
  PictureFolders(int preference, const QStringList& folders, const BaseNameCallback& onBaseName)
      : suffixes_(PictureSuffixes(preference)), onBaseName_(onBaseName) {
    for (const QString& folder : folders) {
      if (!folder.isEmpty()) folders_.push_back({WithOneSlash(folder), std::nullopt});
    }
  }

  QString Find(const QString& baseName) {
    if (onBaseName_) onBaseName_(baseName);
    for (Folder& folder : folders_) {
      if (!folder.Names) folder.Names = ReadNames(folder.Path);
      for (const QString& suffix : suffixes_) {
        const QString wanted = baseName + suffix;
        const QStringList candidates = folder.Names->value(wanted.toCaseFolded());
        if (candidates.contains(wanted)) return folder.Path + wanted;
        if (!candidates.isEmpty()) return folder.Path + candidates.first();
      }
    }
    return QString();
  }

  FoundPicture Scan(TDateTime start, int offsetMinutes) {
    for (int minute = 0; minute < kMinutesScanned; ++minute) {
      const QString found = Find(BaseNameOf(start, minute + offsetMinutes));
      if (!found.isEmpty()) return {found, minute};
    }
    return {};
  }

 private:
  /// File names by their folded form.
  using NameTable = QHash<QString, QStringList>;

  struct Folder {
    QString Path;
    std::optional<NameTable> Names;
  };

  static NameTable ReadNames(const QString& path) {
    NameTable names;
    for (const QString& name : QDir(path).entryList(QDir::Files, QDir::Name)) {
      names[name.toCaseFolded()].append(name);
    }
    return names;
  }

  const QStringList suffixes_;
  const BaseNameCallback& onBaseName_;
  std::vector<Folder> folders_;
};

}  // namespace

QStringList PictureSuffixes(int preference) {
  // Infrared has "-B.jpg" where visible has "-C.jpg", on purpose.
  QString suffixes = QStringLiteral(".bmp,.jpg,.png");
  if (preference == 0) {
    suffixes = QStringLiteral(
        "-2.jpg,V.jpg,V.png,V.bmp,-C.jpg,C.jpg,C.png,C.bmp,B.bmp,-4.jpg,I.jpg,I.png,I.bmp,.jpg,.png,.bmp");
  } else if (preference == 1) {
    suffixes = QStringLiteral(
        "-4.jpg,I.jpg,I.png,I.bmp,-B.jpg,C.jpg,C.png,C.bmp,B.bmp,-2.jpg,V.jpg,V.png,V.bmp,.jpg,.png,.bmp");
  }
  return suffixes.split(u',');
}

QString FindPicture(const QString& baseName, int preference, const QStringList& folders,
                    const BaseNameCallback& onBaseName) {
  return PictureFolders(preference, folders, onBaseName).Find(baseName);
}

FoundPicture ScanMinutes(TDateTime start, int offsetMinutes, int preference, const QStringList& folders,
                         const BaseNameCallback& onBaseName) {
  return PictureFolders(preference, folders, onBaseName).Scan(start, offsetMinutes);
}

FoundPicture LookUpPicture(const QString& key, int preference, const QStringList& folders,
                           int standardOffsetMinutes, int daylightOffsetMinutes,
                           const BaseNameCallback& onBaseName) {
  if (QFileInfo(key).isFile()) return {key, 0};
  const QString stamp = key.left(kStampLength);
  // The year 2000, because it has a 29 February; the year is no part of a picture's name.
  const TDateTime time = orbit::ParseTimeString(stamp.toStdString(), orbit::MakeDateTime(2000, 1, 1));
  const TDateTime start = FirstSearched(time);

  PictureFolders pictures(preference, folders, onBaseName);
  FoundPicture found{pictures.Find(stamp), kMinutesBefore};
  if (found.Path.isEmpty()) found = pictures.Scan(start, 0);
  for (const int offset : {standardOffsetMinutes, daylightOffsetMinutes}) {
    if (found.Path.isEmpty() && offset != 0) found = pictures.Scan(start, offset);
  }
  if (!found.Path.isEmpty()) found.MinutesLater -= kMinutesBefore;
  return found;
}

std::optional<FoundPicture> PictureNamedFor(const QString& path, TDateTime pass, int standardOffsetMinutes,
                                            int daylightOffsetMinutes) {
  const QString stamp = QFileInfo(path).fileName().left(kStampLength);
  for (const int offset : {0, standardOffsetMinutes, daylightOffsetMinutes}) {
    for (int minute = 0; minute < kMinutesScanned; ++minute) {
      if (BaseNameOf(FirstSearched(pass), minute + offset) == stamp) {
        return FoundPicture{path, minute - kMinutesBefore};
      }
    }
  }
  return std::nullopt;
}

QString FindDatedPicture(TDateTime pass, const QString& satellite, const QStringList& folders,
                         int standardOffsetMinutes, int daylightOffsetMinutes) {
  const TDateTime first = FirstSearched(pass);
  const auto isOfPass = [&](const PictureName& name) {
    if (!name.Start || !name.YearIsKnown) return false;
    if (!name.Satellite.isEmpty() && name.Satellite != CommonSatelliteName(satellite)) return false;
    for (const int offset : {0, standardOffsetMinutes, daylightOffsetMinutes}) {
      if (offset != 0 && name.IsUtc) continue;
      const double minutes = (name.Start->Days - first.Days) * orbit::kMinutesPerDay - offset;
      if (minutes >= 0 && minutes < kMinutesScanned) return true;
    }
    return false;
  };
  for (const QString& folder : folders) {
    if (folder.isEmpty()) continue;
    const QDir dir(WithOneSlash(folder));
    for (const QFileInfo& entry :
         dir.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
      const bool isPicture =
          entry.isDir() ? IsProductPath(entry.filePath()) : HasPictureSuffix(entry.fileName());
      if (isPicture && isOfPass(ReadPictureName(entry.filePath()))) return entry.filePath();
    }
  }
  return QString();
}

}  // namespace pelorin::swath
