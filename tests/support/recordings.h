#pragma once

#include "swath/scanner_match.h"

namespace pelorin::tests {

/// What a satellite sends that no table of scanners knows.
inline swath::Recording RecordingOf(const orbit::TSatellite& satellite) {
  swath::Recording recording;
  swath::TakeElements(satellite, swath::ScannerTable(), recording);
  return recording;
}

}  // namespace pelorin::tests
