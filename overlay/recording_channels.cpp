#include "overlay/recording_channels.h"

#include "files/file_error.h"
#include "picture/picture_file.h"
#include "picture/whole_line.h"

namespace pelorin::overlay {
namespace {

QImage LoadChannel(const PictureChannel& channel) {
  const QImage whole = picture::LoadRecording(channel.Path).Image;
  if (channel.Half < 0) return whole;
  return picture::CutWholeLines(whole)[static_cast<std::size_t>(channel.Half)];
}

}  // namespace

std::vector<QImage> ChannelsOfRecording(const OpenedPicture& opened,
                                        const std::function<void(const QString&)>& tell) {
  std::vector<QImage> images{opened.Image};
  for (const PictureChannel& channel : opened.Channels) {
    if (images.size() == kMostChannels) break;
    const bool isOpened = channel.Path == opened.Channel.Path && channel.Half == opened.Channel.Half;
    if (isOpened || !channel.LiesAlike || !opened.Channel.LiesAlike) continue;
    try {
      const QImage image = LoadChannel(channel);
      if (image.size() == opened.Image.size()) {
        images.push_back(image.convertToFormat(QImage::Format_Grayscale8));
      } else {
        tell(QStringLiteral("%1 has another size than %2 and is left out")
                 .arg(channel.Path, opened.Channel.Path));
      }
    } catch (const files::FileError& error) {
      tell(error.Text());
    }
  }
  return images;
}

}  // namespace pelorin::overlay
