#include "picture/jpeg_image.h"

#include <QIODevice>
#include <array>
#include <bit>
#include <csetjmp>
#include <cstddef>
#include <cstdio>
// The library's headers need the C types declared before them.
#include <jpeglib.h>

#include <jerror.h>

#include "files/atomic_file.h"
#include "files/read_file.h"
#include "picture/picture_error.h"
#include "picture/picture_size.h"

// The library leaves a failing call by longjmp, which skips destructors. So each setjmp stands in a
// function of its own that has no objects; what must be released belongs to its caller.

namespace pelorin::picture {
namespace {

/// A pixel of Format_RGB32 as the bytes stand in memory.
constexpr J_COLOR_SPACE kRgb32 = std::endian::native == std::endian::little ? JCS_EXT_BGRA : JCS_EXT_ARGB;

/// A block of 64 samples takes at least one bit, so a byte cannot hold more than this.
constexpr std::int64_t kMaxSamplesPerByte = 512;

/// Far more than any encoder makes: about ten, and each costs time even when it has no data.
constexpr int kMostScans = 100;

struct ErrorState {
  jpeg_error_mgr Manager{};
  std::jmp_buf Return{};
  bool PassesDamage = false;        ///< goes on with what is there
  char Message[JMSG_LENGTH_MAX]{};  ///< the first that told of damage

  QString Text() const { return QString::fromLatin1(Message); }
};

ErrorState& StateOf(j_common_ptr info) { return *static_cast<ErrorState*>(info->client_data); }

void Note(j_common_ptr info) {
  ErrorState& state = StateOf(info);
  if (state.Message[0] == 0) state.Manager.format_message(info, state.Message);
}

[[noreturn]] void Fail(j_common_ptr info) {
  Note(info);
  std::longjmp(StateOf(info).Return, 1);
}

/// Warnings that do not tell of lost pixels are passed over, all others are damage.
void OnMessage(j_common_ptr info, int level) {
  if (level >= 0) return;
  switch (info->err->msg_code) {
    case JWRN_ADOBE_XFORM:
    case JWRN_EXTRANEOUS_DATA:
    case JWRN_JFIF_MAJOR:
    case JWRN_TOO_MUCH_DATA:
      return;
    default:
      if (!StateOf(info).PassesDamage) Fail(info);
      Note(info);
  }
}

void Connect(j_common_ptr info, ErrorState& errors) {
  info->err = jpeg_std_error(&errors.Manager);
  info->client_data = &errors;
  errors.Manager.error_exit = Fail;
  errors.Manager.emit_message = OnMessage;
}

/// libjpeg's records begin alike, so that one set of functions serves both directions.
template <typename Info>
j_common_ptr Common(Info& info) {
  return reinterpret_cast<j_common_ptr>(&info);
}

struct Decoder : ErrorState {
  jpeg_decompress_struct Info{};

  Decoder() { Connect(Common(Info), *this); }
  ~Decoder() { jpeg_destroy_decompress(&Info); }
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;
};

bool ReadHeader(Decoder& decoder, const char* bytes, unsigned long size) {
  if (setjmp(decoder.Return) != 0) return false;
  jpeg_create_decompress(&decoder.Info);
  jpeg_mem_src(&decoder.Info, reinterpret_cast<const unsigned char*>(bytes), size);
  jpeg_read_header(&decoder.Info, TRUE);
  decoder.Info.out_color_space = kRgb32;
  return true;
}

std::int64_t SampleCount(const jpeg_component_info& component) {
  return std::int64_t{component.width_in_blocks} * component.height_in_blocks * DCTSIZE2;
}

struct ScanCount {
  int Scans = 0;
  std::int64_t Samples = 0;  ///< of all components that the scans go over
};

/// Counts the scans of a file by their marks, without decoding any.
ScanCount CountScans(const jpeg_decompress_struct& info, QByteArrayView file) {
  constexpr std::uint8_t startOfScan = 0xDA, firstRestart = 0xD0, endOfImage = 0xD9;
  const auto byte = [file](qsizetype at) { return static_cast<std::uint8_t>(file[at]); };
  ScanCount count;
  for (qsizetype at = 2; (at = file.indexOf('\xFF', at)) >= 0 && at + 4 < file.size();) {
    const std::uint8_t mark = byte(++at);
    // A byte of data, a filler or a mark that stands alone.
    if (mark <= 1 || mark == 0xFF || (mark >= firstRestart && mark <= endOfImage)) continue;
    const qsizetype next = at + 1 + byte(at + 1) * 256 + byte(at + 2);
    if (mark == startOfScan) {
      ++count.Scans;
      for (qsizetype i = 0; i < byte(at + 3) && at + 4 + 2 * i < file.size(); ++i) {
        for (int c = 0; c < info.num_components; ++c) {
          const jpeg_component_info& component = info.comp_info[c];
          if (component.component_id == byte(at + 4 + 2 * i)) count.Samples += SampleCount(component);
        }
      }
    }
    at = next;
  }
  return count;
}

/// Throws PictureError when the file may not be decoded.
void CheckFile(jpeg_decompress_struct& info, QByteArrayView file) {
  std::int64_t samples = 0;
  for (int c = 0; c < info.num_components; ++c) samples += SampleCount(info.comp_info[c]);
  DecodingCost cost{file.size(), info.image_width, info.image_height, samples, kMaxSamplesPerByte};
  CheckCost(cost);
  if (jpeg_has_multiple_scans(&info) == FALSE) return;
  const ScanCount scans = CountScans(info, file);
  if (scans.Scans > kMostScans) {
    throw PictureError(
        QStringLiteral("it comes in %1 scans; at most %2 are decoded").arg(scans.Scans).arg(kMostScans));
  }
  cost.MostPerByte *= 1 + scans.Scans;
  // To go over coefficients takes less than half as long as to make pixels of them.
  cost.WorkBytes += scans.Samples / 2;
  cost.HeldBytes = samples * static_cast<std::int64_t>(sizeof(JCOEF));
  CheckCost(cost);
}

/// Returns how many rows there are.
int ReadRows(Decoder& decoder, uchar* pixels, qsizetype rowBytes) {
  if (setjmp(decoder.Return) == 0) {
    // Of several scans the first has all rows; those that are there make it finer.
    decoder.PassesDamage = jpeg_has_multiple_scans(&decoder.Info) != FALSE;
    jpeg_start_decompress(&decoder.Info);
    while (decoder.Info.output_scanline < decoder.Info.output_height) {
      JSAMPROW row = pixels + rowBytes * decoder.Info.output_scanline;
      jpeg_read_scanlines(&decoder.Info, &row, 1);
    }
  }
  return static_cast<int>(decoder.Info.output_scanline);
}

struct Encoder : ErrorState {
  jpeg_compress_struct Info{};
  jpeg_destination_mgr Destination{};
  std::array<JOCTET, 65536> Buffer;
  QIODevice* Device;

  explicit Encoder(QIODevice& device) : Device(&device) {
    Connect(Common(Info), *this);
    Destination.init_destination = [](j_compress_ptr) {};
    Destination.empty_output_buffer = [](j_compress_ptr info) {
      Of(info)->Flush(0);
      return boolean{TRUE};
    };
    Destination.term_destination = [](j_compress_ptr info) { Of(info)->Flush(info->dest->free_in_buffer); };
    Rewind();
  }
  ~Encoder() { jpeg_destroy_compress(&Info); }
  Encoder(const Encoder&) = delete;
  Encoder& operator=(const Encoder&) = delete;

 private:
  static Encoder* Of(j_compress_ptr info) {
    return static_cast<Encoder*>(static_cast<ErrorState*>(info->client_data));
  }
  void Flush(std::size_t unused) {
    Device->write(reinterpret_cast<const char*>(Buffer.data()), static_cast<qint64>(Buffer.size() - unused));
    Rewind();
  }
  void Rewind() {
    Destination.next_output_byte = Buffer.data();
    Destination.free_in_buffer = Buffer.size();
  }
};

bool WriteRows(Encoder& encoder, const QImage& image, int quality) {
  if (setjmp(encoder.Return) != 0) return false;
  jpeg_compress_struct& info = encoder.Info;
  const bool isGrey = image.format() == QImage::Format_Grayscale8;
  jpeg_create_compress(&info);
  info.dest = &encoder.Destination;
  info.image_width = static_cast<JDIMENSION>(image.width());
  info.image_height = static_cast<JDIMENSION>(image.height());
  info.input_components = isGrey ? 1 : 4;
  info.in_color_space = isGrey ? JCS_GRAYSCALE : kRgb32;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, quality, TRUE);
  jpeg_start_compress(&info, TRUE);
  while (info.next_scanline < info.image_height) {
    // The library only reads the row, whatever its type says.
    JSAMPROW row = const_cast<JSAMPROW>(image.constScanLine(static_cast<int>(info.next_scanline)));
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  return true;
}

}  // namespace

LoadedPicture LoadJpeg(const QString& path) {
  const QByteArray file = files::ReadFile(path, files::kMostPictureBytes);
  const auto refuse = [&path](const QString& reason) {
    throw PictureError(QStringLiteral("Cannot read %1: %2").arg(path, reason));
  };
  Decoder decoder;
  if (!ReadHeader(decoder, file.constData(), static_cast<unsigned long>(file.size()))) refuse(decoder.Text());
  try {
    CheckFile(decoder.Info, file);
  } catch (const PictureError& error) {
    refuse(error.Text());
  }
  LoadedPicture loaded{NewImage(static_cast<int>(decoder.Info.image_width),
                                static_cast<int>(decoder.Info.image_height), QImage::Format_RGB32),
                       {}};
  loaded.Image.fill(kMissingLine);
  const int lines = ReadRows(decoder, loaded.Image.bits(), loaded.Image.bytesPerLine());
  if (lines == 0) refuse(decoder.Text());
  if (decoder.Message[0] != 0) {
    loaded.Damage = DamageText(path, decoder.Text() + u'.', lines, loaded.Image.height());
  }
  return loaded;
}

void SaveJpeg(const QImage& image, const QString& path, int quality) {
  const bool isReady = image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_Grayscale8;
  const QImage rows = isReady ? image : image.convertToFormat(QImage::Format_RGB32);
  files::ReplaceFile(path, [&](QIODevice& device) {
    Encoder encoder(device);
    if (!WriteRows(encoder, rows, quality)) {
      throw PictureError(QStringLiteral("Cannot write %1: %2").arg(path, encoder.Text()));
    }
  });
}

}  // namespace pelorin::picture
