#include "overlay/scan_line.h"

#include <algorithm>

#include "overlay/palette.h"
#include "overlay/scan_line_layout.h"

namespace pelorin::overlay {
namespace {

constexpr std::uint32_t kOpaqueBlack = 0xFF000000, kOpaqueWhite = 0xFFFFFFFF, kOpaqueGrey = 0xFF808080;

}  // namespace

MinuteMarker MarkerAt(double secondsOfMinute) {
  return secondsOfMinute < 1   ? MinuteMarker::Black
         : secondsOfMinute < 2 ? MinuteMarker::White
                               : MinuteMarker::None;
}

void ScanLineWriter::Write(const swath::GroundLine& ground, MinuteMarker marker, bool turned,
                           std::span<std::uint32_t> pixels, std::span<std::uint8_t> indices) const {
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

  colours_.ColourLine(ground, pixels.subspan<kImageBegin, swath::kScanPositions>(),
                      indices.subspan<kImageBegin, swath::kScanPositions>());

  std::fill(pixels.begin() + kImageEnd, pixels.end(), space);
  std::fill(indices.begin() + kImageEnd, indices.end(), kGrey);
  if (turned) {
    std::reverse(pixels.begin(), pixels.end());
    std::reverse(indices.begin(), indices.end());
  }
}

}  // namespace pelorin::overlay
