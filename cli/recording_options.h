#pragma once

#include <optional>

#include "cli/options.h"
#include "swath/recording.h"

namespace pelorin::cli {

/// The options that tell what a received picture is a recording of: those that DescribeMap reads.
std::vector<Option> RecordingOptions();

/// Raises UsageError when they exclude each other, or do not tell when the recording began.
void CheckRecordingOptions(const Arguments& arguments);

/// --stored, and how a picture lies by it; nothing for "auto".
Option StoredOption();
std::optional<swath::Stored> StoredAsTold(const Arguments& arguments);
/// What the option calls it.
QString StoredWord(swath::Stored lies);

}  // namespace pelorin::cli
