#include "picture/sample_image.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "picture/picture_size.h"

namespace pelorin::picture {
namespace {

constexpr int kValues = 65536;
constexpr int kBrightest = 255;
constexpr std::int64_t kTailShare = 1000;  ///< one of so many samples may lie beyond each end

using Histogram = std::vector<std::int64_t>;

/// Samples of 16 bits lie in bytes, so they are copied out; the compiler makes a plain load of it.
int Deep(const std::uint8_t* samples, int index) {
  std::uint16_t value = 0;
  std::memcpy(&value, samples + std::ptrdiff_t{2} * index, sizeof value);
  return value;
}

Histogram CountValues(const SampleRows& samples, int lines) {
  Histogram counts(kValues);
  const int channels = samples.Channels();
  const int colours = channels - (samples.HasAlpha() ? 1 : 0);
  for (int y = 0; y < lines; ++y) {
    const std::uint8_t* row = samples.Row(y);
    for (int x = 0; x < samples.Width() * channels; x += channels) {
      for (int c = 0; c < colours; ++c) ++counts[static_cast<std::size_t>(Deep(row, x + c))];
    }
  }
  counts[0] = 0;
  return counts;
}

/// The first value, counted from one end, with which more than `tail` samples have been passed.
template <class Iterator>
std::ptrdiff_t PassTail(Iterator from, Iterator to, std::int64_t tail) {
  std::int64_t passed = 0;
  return std::find_if(from, to, [&](std::int64_t count) { return (passed += count) > tail; }) - from;
}

using ToneTable = std::array<std::uint8_t, kValues>;

struct Tones {
  ToneTable Colour, Alpha;  ///< for 16 bits
};

std::unique_ptr<Tones> MakeTones(const ToneRange& colour) {
  auto tones = std::make_unique<Tones>();
  for (int value = 0; value < kValues; ++value) {
    tones->Colour[static_cast<std::size_t>(value)] = colour.Tone(value);
    tones->Alpha[static_cast<std::size_t>(value)] = ToneRange().Tone(value);
  }
  return tones;
}

/// One row of `channels` samples a pixel; `colour(i)` and `alpha(i)` give sample i with 8 bits.
template <class Colour, class Alpha>
void FillRow(QRgb* row, int width, int channels, const Colour& colour, const Alpha& alpha) {
  const int green = channels > 2 ? 1 : 0, blue = channels > 2 ? 2 : 0;
  if (channels % 2 == 0) {
    for (int x = 0, at = 0; x < width; ++x, at += channels) {
      row[x] =
          qRgba(colour(at), colour(at + green), colour(at + blue), kBrightest - alpha(at + channels - 1));
    }
  } else {
    for (int x = 0, at = 0; x < width; ++x, at += channels) {
      row[x] = qRgb(colour(at), colour(at + green), colour(at + blue));
    }
  }
}

/// `afterRow` is told each row that is done with.
template <class AfterRow>
QImage Convert(const SampleRows& samples, int lines, const AfterRow& afterRow) {
  if (samples.IsEmpty()) return {};
  const int width = samples.Width(), channels = samples.Channels();
  QImage image =
      NewImage(width, samples.Height(), samples.HasAlpha() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  const auto tones = samples.SampleBytes() == 2 ? MakeTones(FindToneRange(samples, lines)) : nullptr;
  for (int y = 0; y < samples.Height(); ++y) {
    const std::uint8_t* from = samples.Row(y);
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    if (tones == nullptr) {
      const auto plain = [from](int at) { return int{from[at]}; };
      FillRow(row, width, channels, plain, plain);
    } else {
      const auto toned = [from](const ToneTable& table) {
        return [from, &table](int at) { return int{table[static_cast<std::size_t>(Deep(from, at))]}; };
      };
      FillRow(row, width, channels, toned(tones->Colour), toned(tones->Alpha));
    }
    afterRow(y);
  }
  return image;
}

}  // namespace

std::uint8_t ToneRange::Tone(int value) const {
  const int inside = std::clamp(value, Black, White) - Black;
  const int range = White - Black;
  return static_cast<std::uint8_t>((2 * inside * kBrightest + range) / (2 * range));
}

ToneRange FindToneRange(const SampleRows& samples, int lines) {
  const Histogram counts = CountValues(samples, lines);
  std::int64_t all = 0;
  for (const std::int64_t count : counts) all += count;
  if (all == 0) return {};
  const std::int64_t tail = all / kTailShare;
  const auto black = static_cast<int>(PassTail(counts.begin(), counts.end(), tail));
  const auto white = static_cast<int>(kValues - 1 - PassTail(counts.rbegin(), counts.rend(), tail));
  return black < white ? ToneRange{black, white} : ToneRange{0, white};
}

QImage MakeImage(const SampleRows& samples, int lines) {
  return Convert(samples, lines, [](int) {});
}

QImage MakeImage(SampleRows&& samples, int lines) {
  SampleRows rows = std::move(samples);
  return Convert(rows, lines, [&rows](int row) { rows.DropAbove(row); });
}

QImage LayOnWhite(QImage image) {
  if (!image.hasAlphaChannel()) return image;
  for (int y = 0; y < image.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const int alpha = qAlpha(row[x]);
      if (alpha == kBrightest) continue;
      const auto laid = [alpha](int tone) {
        return (tone * alpha + kBrightest * (kBrightest - alpha) + kBrightest / 2) / kBrightest;
      };
      row[x] = qRgb(laid(qRed(row[x])), laid(qGreen(row[x])), laid(qBlue(row[x])));
    }
  }
  image.reinterpretAsFormat(QImage::Format_RGB32);
  return image;
}

}  // namespace pelorin::picture
