#pragma once

#include <QImage>
#include <QString>

#include "picture/png_codec.h"

class QIODevice;
class QPainter;
class QRect;

namespace pelorin::picture {

inline constexpr QLatin1StringView kReadingError("Error Reading File!");

/// A picture in a PNG file. It is loaded and saved whole: its size is the file's and cannot be set, and
/// it does not travel through streams or the clipboard.
class TPngGraphic {
 public:
  /// Throws PictureError: "Error Opening File <path>!" when the file cannot be opened, and
  /// kReadingError when it is no PNG file or no line of it can be read, or what is too much about it; the
  /// earlier picture then stays. Of one that is damaged or cut short the lines before that are there.
  void LoadFromFile(const QString& path);

  /// Replaces the file at `path` by the picture as it is held: what came with a palette or with fewer
  /// than 8 bits is written with 8 bits a sample, 16 bits and transparency are kept. Throws PictureError:
  /// "Error Opening File <path>!" and "Error Writing File!"; an earlier file is then left as it was.
  void SaveToFile(const QString& path) const;

  // Each of these throws PictureError and says that it cannot be done.
  [[noreturn]] void LoadFromStream(QIODevice& stream);
  [[noreturn]] void SaveToStream(QIODevice& stream) const;
  [[noreturn]] void LoadFromClipboard();
  [[noreturn]] void SaveToClipboard() const;
  [[noreturn]] void SetWidth(int width);
  [[noreturn]] void SetHeight(int height);

  /// Draws the picture over `target`, stretched to it; transparent parts leave what is there.
  void Draw(QPainter& painter, const QRect& target) const;

  // What the file's header says; 0 before anything is loaded.
  int Width() const { return picture_.Width; }
  int Height() const { return picture_.Height; }
  int BitDepth() const { return picture_.BitDepth; }
  int ColourType() const { return picture_.ColourType; }

  int LinesRead() const { return picture_.LinesRead; }  ///< from the top
  bool IsWhole() const { return picture_.IsWhole; }

  /// The picture as MakeImage shows its samples; null before anything is loaded. It is made anew at each
  /// call.
  QImage Image() const;

  /// The same for one that is needed no more: its samples are given back meanwhile.
  QImage TakeImage() &&;

 private:
  PngPicture picture_;
};

}  // namespace pelorin::picture
