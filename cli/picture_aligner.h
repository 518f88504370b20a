#pragma once

#include "align/picture_alignment.h"
#include "cli/options.h"
#include "overlay/map_sources.h"
#include "overlay/opened_picture.h"

/// A received picture is aligned by its coasts, as the options say.
namespace pelorin::cli {

/// How it is done: "range", "remember", "require-align".
std::vector<Option> AlignOptions();

struct AlignedPicture {
  swath::Recording Known;  ///< before
  align::PictureAlignment Alignment;
  int Channels = 0;  ///< pictures that were looked at
  int Milliseconds = 0;
};

/// Aligns a picture whose recording is known. Shows on a terminal how far it is; says what is missing.
/// Raises Failure when the sources have no overlay master.
AlignedPicture AlignReceived(const Arguments& arguments, const overlay::OpenedPicture& opened,
                             const swath::Recording& known, const overlay::MapSources& sources);

/// Raises NotAligned when there is no alignment, and --require-align asks for one.
void RequireAlignment(const Arguments& arguments, const AlignedPicture& aligned);

/// Writes an alignment, if there is one, into the log, where --remember asks for it.
void RememberAlignment(const Arguments& arguments, const overlay::OpenedPicture& opened,
                       const AlignedPicture& aligned);

}  // namespace pelorin::cli
