#pragma once

#include <QStringList>
#include <cstddef>

#include "elements/element_data.h"

namespace pelorin::elements {

/// More than 80% and less than 120% of the size of the file that it is to replace.
bool IsPlausibleSize(qint64 received, qint64 present);

/// The same for numbers of sets, both bounds included: a file of one set, or of four, has no others within.
bool IsPlausibleCount(std::size_t received, std::size_t present);

/// What speaks against putting received elements in a file's place.
enum class UpdateFault {
  None,
  NoElements,   ///< something else came, or not all of them
  Older,        ///< they are of an earlier time than those that are there
  OtherNumber,  ///< there are far more or far fewer than before, or of other satellites
};

struct UpdateVerdict {
  UpdateFault Fault = UpdateFault::None;
  std::size_t PresentSets = 0, ReceivedSets = 0;
  QStringList Gone;      ///< names of satellites that the file has and the received data have not
  double DaysOlder = 0;  ///< in the mean of the satellites that both have
};

/// Data of the file's own form are judged by their bytes and their sets, those of another form by their sets
/// alone; and in either form they must have four of five of its satellites.
UpdateVerdict JudgeUpdate(const ElementData& received, const ElementData& present);

}  // namespace pelorin::elements
