#pragma once

#include "align/picture_alignment.h"
#include "overlay/map_sources.h"

namespace pelorin::cli {

/// The ground that pictures are compared with: the sources' overlay master, and the fine coasts where the
/// program's data have them. The sources must outlive it.
class CoastGround {
 public:
  /// Raises Failure when there is no overlay master.
  explicit CoastGround(const overlay::MapSources& sources);
  CoastGround(const CoastGround&) = delete;
  CoastGround& operator=(const CoastGround&) = delete;

  /// Borrowed from this object.
  align::Ground Borrowed() const;

 private:
  const overlay::MasterView* master_;
  lines::FoundFineLines shores_;
};

}  // namespace pelorin::cli
