#pragma once

#include "cli/options.h"

namespace pelorin::cli {

/// The options that tell what a received picture is a recording of: those that DescribeMap reads.
std::vector<Option> RecordingOptions();

/// Raises UsageError when they exclude each other, or do not tell when the recording began.
void CheckRecordingOptions(const Arguments& arguments);

}  // namespace pelorin::cli
