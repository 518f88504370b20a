#include "overlay/scan_line.h"

#include <algorithm>

#include "overlay/palette.h"
#include "swath/apt_line.h"

namespace pelorin::overlay {

using swath::kFirstPulse;
using swath::kLastPulse;
using swath::kPulsePeriod;
using swath::kSpaceEnd;
using swath::kSyncEnd;

namespace {

constexpr std::uint32_t kOpaqueBlack = 0xFF000000, kOpaqueWhite = 0xFFFFFFFF, kOpaqueGrey = 0xFF808080;

}  // namespace

MinuteMarker MarkerAt(double secondsOfMinute) {
  return secondsOfMinute < 1   ? MinuteMarker::Black
         : secondsOfMinute < 2 ? MinuteMarker::White
                               : MinuteMarker::None;
}

void ScanLineWriter::WriteFrame(MinuteMarker marker, std::size_t imageEnd, std::span<std::uint32_t> pixels,
                                std::span<std::uint8_t> indices) {
  std::fill_n(pixels.begin(), kSyncEnd, kOpaqueBlack);
  std::fill_n(indices.begin(), kSyncEnd, kBlack);
  for (int pulse = kFirstPulse; pulse <= kLastPulse; pulse += kPulsePeriod) {
    std::fill_n(pixels.begin() + pulse, 2, kOpaqueWhite);
    std::fill_n(indices.begin() + pulse, 2, kWhite);
  }
  const std::uint32_t space = marker == MinuteMarker::Black   ? kOpaqueBlack
                              : marker == MinuteMarker::White ? kOpaqueWhite
                                                              : kOpaqueGrey;
  const std::uint8_t spaceIndex = marker == MinuteMarker::Black   ? kBlack
                                  : marker == MinuteMarker::White ? kWhite
                                                                  : kGrey;
  std::fill(pixels.begin() + kSyncEnd, pixels.begin() + kSpaceEnd, space);
  std::fill(indices.begin() + kSyncEnd, indices.begin() + kSpaceEnd, spaceIndex);
  std::ranges::fill(pixels.subspan(imageEnd), space);
  std::ranges::fill(indices.subspan(imageEnd), kGrey);
}

void ScanLineWriter::Write(const swath::GroundLine& ground, MinuteMarker marker, bool runsLeft,
                           std::span<std::uint32_t> pixels, std::span<std::uint8_t> indices) const {
  const std::size_t columns = ground.SouthMin.size();
  if (firstColumn_ >= kSpaceEnd) WriteFrame(marker, firstColumn_ + columns, pixels, indices);
  colours_.ColourLine(ground, pixels.subspan(firstColumn_, columns), indices.subspan(firstColumn_, columns));
  if (runsLeft) {
    std::ranges::reverse(pixels);
    std::ranges::reverse(indices);
  }
}

}  // namespace pelorin::overlay
